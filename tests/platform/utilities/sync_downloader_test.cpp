#include "../support/bare_device.h"
#include "canned_server.h"

#include <utilities/http_client.h>
#include <utilities/sync_downloader.h>
#include <vellum/clock.h>

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <csignal>
#include <future>
#include <sys/resource.h>

using namespace tessaly;
using fixture::Fault;
using utilities::SyncDownloader;

Q_DECLARE_METATYPE(Fault)

namespace {

const std::string content(3'000'000, 'c');

std::string checksumOf(const std::string& text) {
    return QCryptographicHash::hash(QByteArrayView(text.data(), qsizetype(text.size())),
                                    QCryptographicHash::Sha256)
        .toHex()
        .toStdString();
}

} // namespace

class SyncDownloaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { utilities::HttpClient::setDefaultLimits({1000, 1, 1, 1000}); }

    void init() {
        QDir folder(m_folder);
        folder.removeRecursively();
        folder.mkpath(m_folder);
        m_server.setFault({});
    }

    void cleanup() { QCOMPARE(m_log.take(), QStringList()); }

    void storesTheWholeFile_data() {
        QTest::addColumn<std::string>("fragment");
        QTest::addColumn<Fault>("fault");
        const std::string checksum = checksumOf(content);
        QTest::newRow("nothing known") << std::string() << Fault{};
        QTest::newRow("all known") << "#size=3000000&sha256=" + checksum << Fault{};
        QTest::newRow("capitals") << "#sha256=" + QString::fromStdString(checksum).toUpper().toStdString()
                                  << Fault{};
        // Longer than the bound on other requests.
        QTest::newRow("slow") << std::string("#size=3000000") << Fault{Fault::Kind::None, 0, 2'000'000};
    }
    void storesTheWholeFile() {
        QFETCH(std::string, fragment);
        QFETCH(Fault, fault);
        m_server.setFault(fault);
        QVERIFY(write("file.tsi", "an older one"));
        SyncDownloader downloader("/mnt/ext1/Downloads");
        QVERIFY(downloader.Download(m_server.url("/file") + fragment, "/file.tsi", 0, "label"));
        QCOMPARE(read("file.tsi"), content);
        QCOMPARE(files(), QStringList(QStringLiteral("file.tsi")));
        bool active = true;
        std::string text;
        int total = 0;
        int done = 0;
        downloader.GetProgress(&active, &text, &total, &done);
        QVERIFY(!active && text == "label" && total == 2930 && done == 2930);
        downloader.ClearStatus();
        downloader.GetProgress(nullptr, &text, &total, &done);
        QVERIFY(text.empty() && total == 1 && done == 0);
    }

    void failureLeavesNothing_data() {
        QTest::addColumn<std::string>("address");
        QTest::addColumn<std::string>("path");
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<QString>("reason");
        const auto add = [](const char* name, const std::string& address, const Fault& fault,
                            const QString& reason, const std::string& path = "/file.tsi") {
            QTest::newRow(name) << address << path << fault << reason;
        };
        using Kind = Fault::Kind;
        add("cut", "/file", {Kind::Close, 1'000'000}, QStringLiteral("2000000 bytes remaining"));
        add("reset", "/file", {Kind::Reset, 1'000'000}, QStringLiteral("Recv failure"));
        add("stall", "/file", {Kind::Stall, 1'000'000}, QStringLiteral("Timeout"));
        add("endless", "/file#size=1000000", {Kind::Endless}, QStringLiteral("longer than announced"));
        add("announces another size", "/file#size=5", {},
            QStringLiteral("announces 3000000 bytes instead of 5"));
        add("announces too much", "/huge", {}, QStringLiteral("Maximum file size exceeded"));
        add("unannounced and short", "/open#size=5", {}, QStringLiteral("shorter than announced"));
        add("wrong checksum", "/file#sha256=" + checksumOf("other"), {}, QStringLiteral("checksum is wrong"));
        add("no checksum", "/file#sha256=abc", {}, QStringLiteral("makes no sense"));
        add("no size", "/file#size=-1", {}, QStringLiteral("makes no sense"));
        add("error status", "/missing", {}, QStringLiteral("status 404"));
        add("empty error status", "/gone", {}, QStringLiteral("status 410"));
        const std::string names[] = {"",    "/",  "//file.tsi", "/a/b",
                                     "/..", "..", "/.",         std::string("/a\0b", 4)};
        for (const std::string& name : names)
            add("name " + QByteArray::fromStdString(name).toPercentEncoding(), "/file", {},
                QStringLiteral("not a file name"), name);
        add("name too long", "/file", {}, QStringLiteral("File name too long"), '/' + std::string(256, 'n'));
        add("name of a folder", "/file", {}, QStringLiteral("Is a directory"), "/folder");
    }
    void failureLeavesNothing() {
        QFETCH(std::string, address);
        QFETCH(std::string, path);
        QFETCH(Fault, fault);
        QFETCH(QString, reason);
        m_server.setFault(fault);
        QDir(m_folder).mkdir(QStringLiteral("folder"));
        SyncDownloader downloader("/mnt/ext1/Downloads");
        QVERIFY(!downloader.Download(m_server.url(address), path, 0, "label"));
        const QStringList errors = m_log.take();
        QVERIFY2(errors.size() == 1 && errors.first().contains(reason), qPrintable(errors.join(u'\n')));
        std::string text;
        downloader.GetProgress(nullptr, &text, nullptr, nullptr);
        QVERIFY(errors.first().endsWith(QString::fromStdString(text)));
        QCOMPARE(files(), QStringList(QStringLiteral("folder")));
    }

    void failsWithoutFolderOrNetworkOrSpace() {
        QVERIFY(
            !SyncDownloader("/mnt/ext1/Nowhere").Download(m_server.url("/file"), "/file.tsi", 0, "label"));
        QVERIFY(m_log.take().value(0).contains(QStringLiteral("No such file or directory")));

        SyncDownloader downloader("/mnt/ext1/Downloads");
        QVERIFY(write("file.tsi", "an older one"));
        vellum::state::setNetworkReachable(false);
        const bool isDone = downloader.Download(m_server.url("/file"), "/file.tsi", 0, "label");
        vellum::state::setNetworkReachable(true);
        QVERIFY(!isDone);
        QVERIFY(m_log.take().value(0).contains(QStringLiteral("connect")));

        std::signal(SIGXFSZ, SIG_IGN);
        rlimit unlimited{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
        const rlimit small{1'000'000, unlimited.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        QVERIFY(!downloader.Download(m_server.url("/file"), "/file.tsi", 0, "label"));
        ::setrlimit(RLIMIT_FSIZE, &unlimited);
        QVERIFY(m_log.take().value(0).contains(QStringLiteral("File too large")));
        QCOMPARE(files(), QStringList());
    }

    void cancelEndsTheDownload_data() {
        QTest::addColumn<Fault>("fault");
        QTest::newRow("flowing") << Fault{Fault::Kind::None, 0, 500'000};
        QTest::newRow("stalled") << Fault{Fault::Kind::Stall, 100'000};
    }
    void cancelEndsTheDownload() {
        QFETCH(Fault, fault);
        m_server.setFault(fault);
        SyncDownloader downloader("/mnt/ext1/Downloads");
        auto result = std::async(std::launch::async, [&] {
            return downloader.Download(m_server.url("/file"), "/file.tsi", 0, "label");
        });
        bool active = false;
        int total = 0;
        int done = 0;
        while (done == 0) {
            downloader.GetProgress(&active, nullptr, &total, &done);
            QVERIFY(total > 0 && done <= total);
        }
        QVERIFY(active);
        QCOMPARE(total, 2930);
        QElapsedTimer timer;
        timer.start();
        downloader.CancelCurrent();
        downloader.ClearStatus(); // must not bring it back to life
        QVERIFY(!result.get());
        QVERIFY(timer.elapsed() < 450);
        QCOMPARE(files(), QStringList());
    }

    void cancelLastsUntilCleared() {
        SyncDownloader downloader("/mnt/ext1/Downloads");
        downloader.CancelCurrent();
        const int before = m_server.requests();
        QVERIFY(!downloader.Download(m_server.url("/file"), "/file.tsi", 0, "label"));
        QVERIFY(!downloader.Download(m_server.url("/file"), "/file.tsi", 0, "label"));
        QCOMPARE(m_server.requests(), before);
        downloader.ClearStatus();
        QVERIFY(downloader.Download(m_server.url("/file"), "/file.tsi", 0, "label"));
    }

    void keepsToItsOptions() {
        SyncDownloader downloader("/mnt/ext1/Downloads", {{{"X-Key", "secret"}}, 1000});
        QVERIFY(downloader.Download(m_server.url("/echo"), "/file.tsi", 0, "label"));
        QVERIFY(read("file.tsi").find("\r\nX-Key: secret\r\n") != std::string::npos);
        QVERIFY(!downloader.Download(m_server.url("/file"), "/file.tsi", 0, "label"));
        QVERIFY(m_log.take().value(0).endsWith(QStringLiteral("Maximum file size exceeded")));
    }

    void quittingEndsADownload() {
        m_server.setFault({Fault::Kind::Stall, 1'000'000});
        SyncDownloader downloader("/mnt/ext1/Downloads");
        auto result = std::async(std::launch::async, [&] {
            return downloader.Download(m_server.url("/file"), "/file.tsi", 0, "label");
        });
        const auto done = [&downloader] {
            int kibibytes = 0;
            downloader.GetProgress(nullptr, nullptr, nullptr, &kibibytes);
            return kibibytes;
        };
        QTRY_VERIFY(done() > 0);
        vellum::clock::wakeAll();
        const auto state = result.wait_for(std::chrono::milliseconds(450)); // of a stall of a second
        vellum::clock::resume();
        QCOMPARE(state, std::future_status::ready);
        QVERIFY(!result.get()); // and nothing is logged: it was no failure
        QCOMPARE(files(), QStringList());
    }

    void downloadsOfOneNameDoNotMix() {
        SyncDownloader first("/mnt/ext1/Downloads");
        SyncDownloader second("/mnt/ext1/Downloads");
        m_server.setFault({Fault::Kind::None, 0, 10'000'000});
        auto one = std::async(std::launch::async,
                              [&] { return first.Download(m_server.url("/file"), "/file.tsi", 0, "first"); });
        QVERIFY(second.Download(m_server.url("/other"), "/file.tsi", 0, "second"));
        QVERIFY(one.get());
        const std::string stored = read("file.tsi");
        QVERIFY(stored == content || stored == std::string(2'000'000, 'o'));
        QCOMPARE(files(), QStringList(QStringLiteral("file.tsi")));
    }

    void clearsAwayWhatDeadDownloadsLeft() {
        QVERIFY(write(".tsi-download-1-1", "left by a process whose number lives"));
        QVERIFY(write(".tsi-download-999999999-7", "left"));
        QVERIFY(write(".tsi-download-notes", "the user's"));
        QVERIFY(
            SyncDownloader("/mnt/ext1/Downloads").Download(m_server.url("/file"), "file.tsi", 0, "label"));
        QCOMPARE(files(), (QStringList{QStringLiteral(".tsi-download-notes"), QStringLiteral("file.tsi")}));
    }

private:
    [[nodiscard]] bool write(const char* name, const char* text) const {
        QFile file(m_folder + QString::fromUtf8(name));
        return file.open(QIODevice::WriteOnly) && file.write(text) > 0;
    }
    [[nodiscard]] std::string read(const char* name) const {
        QFile file(m_folder + QString::fromUtf8(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }
    [[nodiscard]] QStringList files() const {
        return QDir(m_folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    tests::BareDevice m_device;
    tests::LogSpy m_log;
    const QString m_folder = m_device.path("/mnt/ext1/Downloads/");
    tests::CannedServer m_server{{
        {"/file", tests::CannedServer::ok(content)},
        {"/other", tests::CannedServer::ok(std::string(2'000'000, 'o'))},
        {"/open", "HTTP/1.1 200 OK\r\n\r\nfour"},
        {"/huge", "HTTP/1.1 200 OK\r\nContent-Length: 5000000000\r\n\r\nand so on"},
        {"/missing", "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone"},
        {"/gone", "HTTP/1.1 410 Gone\r\nContent-Length: 0\r\n\r\n"},
    }};
};

QTEST_GUILESS_MAIN(SyncDownloaderTest)
#include "sync_downloader_test.moc"
