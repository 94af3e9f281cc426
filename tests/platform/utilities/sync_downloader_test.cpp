#include "../programs/package_builder.h"
#include "../support/canned_server.h"

#include <platform/vellum/testing.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>
#include <utilities/http_client.h>
#include <utilities/sync_downloader.h>
#include <vellum/clock.h>
#include <vellum/device_state.h>

#include <QCryptographicHash>
#include <QTest>
#include <csignal>
#include <future>
#include <optional>
#include <sys/resource.h>

using namespace tessaly;
using fixture::Fault;
using utilities::SyncDownloader;
using Kind = Fault::Kind;

Q_DECLARE_METATYPE(Fault)

namespace {

/// Of three million bytes; a null manifest is left out.
QByteArray packageOf(const QByteArray& manifest) {
    const QTemporaryDir folder;
    tests::PackageBuilder package;
    package.manifest = manifest;
    package.hole = 3'000'000 - quint32(package.build().size());
    package.write(folder.filePath(u"package"_qs));
    return readFile(folder.filePath(u"package"_qs));
}

const QByteArray content = packageOf("{}");

std::string checksumOf(const QByteArray& manifest) {
    return QCryptographicHash::hash(manifest, QCryptographicHash::Sha256).toHex().toStdString();
}

struct Progress {
    explicit Progress(const SyncDownloader& downloader) {
        downloader.GetProgress(&active, &label, &total, &done);
    }
    bool active = false;
    std::string label;
    int total = 0;
    int done = 0;
};

} // namespace

class SyncDownloaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        utilities::HttpClient::setDefaultLimits({1000, 1, 1, 1000});
        QVERIFY(QDir(m_folder).removeRecursively() && QDir().mkpath(m_folder));
        m_server.setFault({});
        m_downloader.emplace("/mnt/ext1/Downloads");
    }

    void cleanup() { QCOMPARE(m_log.takeUnexpected(), QStringList()); }

    void downloads_data() {
        QTest::addColumn<std::string>("address");
        QTest::addColumn<std::string>("path");
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<QString>("reason"); // of a failure, which leaves nothing; or none
        const auto add = [](const std::string& address, const char* reason, const Fault& fault = {},
                            const std::string& path = "/file.tsi") {
            QTest::addRow("%s %s: %s", address.c_str(), path.c_str(), reason)
                << address << path << fault << QString::fromLatin1(reason);
        };
        const std::string sha256 = checksumOf("{}");
        add("/file", "");
        add("/file#size=3000000&manifest_sha256=" + sha256, "");
        add("/file#manifest_sha256=" + QString::fromStdString(sha256).toUpper().toStdString(), "");
        add("/file#size=3000000", "", {Kind::None, 0, 2'000'000}); // longer than the bound on other requests
        add("/file", "2000000 bytes remaining", {Kind::Close, 1'000'000});
        add("/file", "Recv failure", {Kind::Reset, 1'000'000});
        add("/file", "Timeout", {Kind::Stall, 1'000'000});
        add("/file#size=1000000", "longer than announced", {Kind::Endless});
        add("/file#size=5", "announces 3000000 bytes instead of 5");
        add("/huge", "Maximum file size exceeded");
        add("/open#size=5", "shorter than announced");
        add("/file#manifest_sha256=" + checksumOf("other"), "checksum is wrong");
        add("/bare#manifest_sha256=" + checksumOf({}), "no manifest");
        add("/other#manifest_sha256=" + checksumOf({}), "no directory at its end");
        add("/file#manifest_sha256=abc", "makes no sense");
        add("/file#size=-1", "makes no sense");
        add("/file#size=2199023255552", "makes no sense");
        add("/missing", "status 404");
        add("/gone", "status 410");
        for (const char* const name : {"", "/", "//file.tsi", "/a/b", "/..", "..", "/."})
            add("/file", "not a file name", {}, name);
        add("/file", "not a file name", {}, std::string("/a\0b", 4));
        add("/file", "File name too long", {}, '/' + std::string(256, 'n'));
        add("/file", "Is a directory", {}, "/folder");
    }
    void downloads() {
        QFETCH(std::string, address);
        QFETCH(std::string, path);
        QFETCH(Fault, fault);
        QFETCH(QString, reason);
        m_server.setFault(fault);
        QDir(m_folder).mkdir(u"folder"_qs);
        if (reason.isEmpty())
            writeFile(m_file, "an older one");
        QCOMPARE(download(address, path), reason.isEmpty());
        const Progress end(*m_downloader);
        if (reason.isEmpty()) {
            QCOMPARE(readFile(m_file), content);
            QVERIFY(!end.active && end.label == "label" && end.total == 2930 && end.done == 2930);
        } else {
            const QStringList errors = m_log.takeUnexpected();
            QVERIFY2(errors.size() == 1 && errors[0].contains(reason), qPrintable(errors.join(u'\n')));
            QVERIFY(errors[0].endsWith(QString::fromStdString(end.label)));
        }
        QCOMPARE(files().join(u' '), reason.isEmpty() ? u"file.tsi folder"_qs : u"folder"_qs);
        m_downloader->ClearStatus();
        const Progress cleared(*m_downloader);
        QVERIFY(cleared.label.empty() && cleared.total == 1 && cleared.done == 0);
    }

    void failsWithoutFolderOrSpace() {
        const auto fails = [this](const char* reason) {
            return !download("/file") && m_log.takeUnexpected().value(0).contains(QLatin1String(reason));
        };
        writeFile(m_file, "an older one");
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit unlimited{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
        const rlimit small{1'000'000, unlimited.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        const bool failsWhenFull = fails("File too large");
        ::setrlimit(RLIMIT_FSIZE, &unlimited);
        QVERIFY(failsWhenFull);
        QCOMPARE(files(), QStringList());
        m_downloader.emplace("/mnt/ext1/Nowhere");
        QVERIFY(fails("No such file or directory"));
    }

    void endsInTheMiddle_data() {
        QTest::addColumn<Fault>("fault");
        QTest::newRow("cancelled, flowing") << Fault{Kind::None, 0, 500'000};
        QTest::newRow("cancelled, stalled") << Fault{Kind::Stall, 100'000};
        QTest::newRow("cancelled, broken off") << Fault{Kind::Close, 1'000'000};
        QTest::newRow("quit") << Fault{Kind::Stall, 1'000'000};
        QTest::newRow("network gone") << Fault{Kind::None, 0, 500'000};
    }
    void endsInTheMiddle() {
        QFETCH(Fault, fault);
        const QByteArray how = QTest::currentDataTag();
        m_server.setFault(fault);
        utilities::HttpClient::setDefaultLimits({1000, 20, 20, 1000});
        vellum::clock::setSpeed(0.1);
        auto result = std::async(std::launch::async,
                                 [&] { return download(how == "network gone" ? "/file" : "/tagged"); });
        while (Progress(*m_downloader).done == 0)
            QVERIFY(Progress(*m_downloader).total > 0);
        const Progress progress(*m_downloader);
        QVERIFY(progress.active && progress.total == 2930 && progress.done <= 2930);
        if (how == "quit")
            vellum::clock::beginQuit();
        else if (how == "network gone")
            vellum::state::setNetworkReachable(false);
        else
            m_downloader->CancelCurrent();
        m_downloader->ClearStatus();                                 // must not bring it back to life
        const auto state = result.wait_for(std::chrono::seconds(5)); // a stall or a pause lasts longer
        vellum::testing::resume();
        vellum::clock::setSpeed(1);
        vellum::state::setNetworkReachable(true);
        QCOMPARE(state, std::future_status::ready);
        QVERIFY(!result.get());
        QCOMPARE(m_log.takeUnexpected().size(), how == "network gone" ? 1 : 0); // the others are no failures
        QCOMPARE(files(), QStringList());
    }

    void goesOnWhereItBrokeOff_data() {
        QTest::addColumn<int>("pieceBytes");
        QTest::addColumn<QByteArray>("etag");
        QTest::addColumn<bool>("changes");
        QTest::addColumn<QString>("expected"); // the starts of the requests, and why it failed
        const QByteArray etag = "\"e\"";
        QTest::newRow("three times") << 800'000 << etag << false << u"0 800000 1600000 2400000"_qs;
        QTest::newRow("no more")
            << 700'000 << etag << false
            << u"0 700000 1400000 2100000 transfer closed with 200000 bytes remaining to read"_qs;
        QTest::newRow("another file")
            << 800'000 << etag << true << u"0 800000 the file has changed on the server"_qs;
        for (const QByteArray& other : {QByteArray(), "W/" + etag})
            QTest::addRow("no ETag that serves: %s", other.constData())
                << 800'000 << other << false << u"0 transfer closed with 2200000 bytes remaining to read"_qs;
    }
    void goesOnWhereItBrokeOff() {
        QFETCH(int, pieceBytes);
        QFETCH(QByteArray, etag);
        QFETCH(bool, changes);
        QFETCH(QString, expected);
        QStringList seen;
        std::optional<fixture::LoopbackServer> server;
        const auto answer = [&](QTcpSocket& client) {
            const QString request = QString::fromUtf8(client.readAll());
            const int start = request.section(u"\r\nRange: bytes="_qs, 1).section(u'-', 0, 0).toInt();
            const bool isRest = request.contains(u"\r\nIf-Range: "_qs) && !changes;
            const QByteArray body = content.mid(isRest ? start : 0);
            seen << QString::number(start);
            client.write("HTTP/1.1 " + QByteArray(isRest ? "206 Part" : "200 OK") + "\r\nETag: " + etag +
                         "\r\nContent-Range: bytes " + QByteArray::number(start) +
                         "-2999999/3000000\r\nContent-Length: " + QByteArray::number(body.size()) +
                         "\r\n\r\n" + body.left(pieceBytes));
            client.disconnectFromHost();
        };
        server.emplace([&](QTcpSocket& client) {
            QObject::connect(
                &client, &QTcpSocket::readyRead, &client, [&] { answer(client); }, Qt::SingleShotConnection);
        });
        vellum::clock::setSpeed(20);
        const std::string url = "http://127.0.0.1:" + std::to_string(server->port()) +
                                "/file#size=3000000&manifest_sha256=" + checksumOf("{}");
        const bool isWhole = m_downloader->Download(url, "/file.tsi", 0, "label");
        vellum::clock::setSpeed(1);
        server.reset(); // joins what writes to `seen`
        QCOMPARE(readFile(m_file), isWhole ? content : QByteArray());
        if (!isWhole)
            seen << m_log.takeUnexpected().value(0).section(u"(label): "_qs, 1);
        QCOMPARE(seen.join(u' '), expected);
    }

    void cancelLastsUntilCleared() {
        m_downloader->CancelCurrent();
        QVERIFY(!download("/file") && !download("/file"));
        m_downloader->ClearStatus();
        QVERIFY(download("/file"));
    }

    void downloadsOfOneNameDoNotMix() {
        SyncDownloader second("/mnt/ext1/Downloads");
        m_server.setFault({Kind::None, 0, 10'000'000});
        auto one = std::async(std::launch::async, [&] { return download("/file"); });
        QVERIFY(second.Download(m_server.url("/other"), "/file.tsi", 0, "second"));
        QVERIFY(one.get());
        QVERIFY(readFile(m_file) == content || readFile(m_file) == QByteArray(2'000'000, 'o'));
        QCOMPARE(files(), QStringList(u"file.tsi"_qs));
    }

    void clearsAwayWhatDeadDownloadsLeft() {
        writeFile(m_folder + u".tsi-download-1-1"_qs, "left by a process whose number lives");
        writeFile(m_folder + u".tsi-download-999999999-7"_qs, "left");
        writeFile(m_folder + u".tsi-download-notes"_qs, "the user's");
        QVERIFY(download("/file", "file.tsi"));
        QCOMPARE(files(), (QStringList{u".tsi-download-notes"_qs, u"file.tsi"_qs}));
    }

private:
    bool download(const std::string& address, const std::string& path = "/file.tsi") {
        return m_downloader->Download(m_server.url(address), path, 0, "label");
    }
    [[nodiscard]] QStringList files() const { return folderContent(m_folder).keys(); }

    fixture::TestDevice m_device;
    LogWatch m_log;
    std::optional<SyncDownloader> m_downloader;
    const QString m_folder = m_device.path("/mnt/ext1/Downloads/");
    const QString m_file = m_folder + u"file.tsi"_qs;
    tests::CannedServer m_server{{
        {"/file", tests::CannedServer::ok(content.toStdString())},
        {"/tagged", tests::CannedServer::withBody("200 OK\r\nETag: \"e\"", content.toStdString())},
        {"/other", tests::CannedServer::ok(std::string(2'000'000, 'o'))},
        {"/bare", tests::CannedServer::ok(packageOf({}).toStdString())},
        {"/open", "HTTP/1.1 200 OK\r\n\r\nfour"},
        {"/huge", "HTTP/1.1 200 OK\r\nContent-Length: 5000000000\r\n\r\nand so on"},
        {"/missing", tests::CannedServer::withBody("404 Not Found", "none")},
        {"/gone", tests::CannedServer::withBody("410 Gone", "")},
    }};
};

QTEST_GUILESS_MAIN(SyncDownloaderTest)
#include "sync_downloader_test.moc"
