#include "../../programs/package_builder.h"
#include "../../support/canned_server.h"
#include "../../support/killing.h"

#include <platform/vellum/testing.h>
#include <services/tsi_installation_service.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

using namespace tessaly;
using fixture::Fault;
using services::TsiInstallationService;
using services::TsiInstallationSummary;
using tests::CannedServer;
using Content = QMap<QString, QByteArray>;
using Entry = tests::PackageBuilder::Entry;
using Spoil = std::function<void(CannedServer&)>;

Q_DECLARE_METATYPE(Spoil)

namespace {

/// An archive with these files, as a server would offer it.
std::string archiveOf(const QList<Entry>& entries) {
    tests::PackageBuilder builder;
    builder.entries = entries;
    builder.manifest = QByteArray();
    return builder.build().toStdString();
}

/// What doesn't shrink in an archive, so that there is something to download.
QByteArray noise(qsizetype size) {
    QByteArray bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), QRandomGenerator(1));
    return bytes;
}

/// From "NAME=CONTENT,NAME=CONTENT".
Content files(const char* list) {
    Content result;
    for (const QString& file : QString::fromLatin1(list).split(u',', Qt::SkipEmptyParts))
        result[file.section(u'=', 0, 0)] = file.section(u'=', 1).toLatin1();
    return result;
}

/// What the second process does: it begins, and installs the data of an address if one is given.
int install(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    TsiInstallationService service;
    QObject::connect(&service, &TsiInstallationService::finished, &application,
                     [](bool success) { QCoreApplication::exit(success ? 0 : 1); });
    if (argc < 3)
        return 0;
    service.install(QString::fromUtf8(argv[2]));
    return QCoreApplication::exec();
}

} // namespace

/// The installation of morphology data: what it refuses, and what is on the device whenever it ends.
class MorphologyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_device.emplace();
        m_device->setOnline(true);
        m_log.emplace();
        m_summary = std::make_unique<TsiInstallationSummary>();
        m_service = std::make_unique<TsiInstallationService>();
        m_service->setSummary(m_summary.get());
    }
    void cleanup() {
        QTRY_COMPARE(vellum::testing::activeSleepPreventors(), 0); // no worker is left
        QVERIFY(m_summary->runningCount() == 0 && m_summary->canAbort());
        m_service.reset();
        QCOMPARE(m_log->unexpected(), QStringList());
        m_log.reset();
        m_device.reset();
    }

    /// Each with a part of the reason that the log gives, and nothing changed on the device.
    void failures_data() {
        QTest::addColumn<std::string>("archive");
        QTest::addColumn<Spoil>("spoil");
        const Entry rules{u"de.aff"_qs, "rules"};
        const Entry words{u"de.dic"_qs, "words"};
        const std::string good = archiveOf({rules, {u"de.dic"_qs, noise(5000)}});
        const auto row = [](
                             const char* reason, const std::string& archive,
                             const Spoil& spoil = [](CannedServer&) {}) {
            QTest::addRow("%s", reason) << archive << spoil;
        };
        row("damaged", "no zip");
        row("damaged", good.substr(0, good.size() - 30));
        row("damaged", std::string(good).replace(good.size() / 2, 1, "x"));
        row("\"../de.aff\", which isn't of \"de\"", archiveOf({rules, words, {u"../de.aff"_qs, "rules"}}));
        row("\"fr.aff\", which isn't of \"de\"", archiveOf({{u"fr.aff"_qs, "rules"}}));
        row("\"de.aff\", which isn't of \"de\" or is there twice", archiveOf({rules, rules, words}));
        row("plain files", archiveOf({rules, {u"de.dic"_qs, "/etc/passwd", true}}));
        row("plain files", archiveOf({rules, words, {u"de/"_qs, ""}}));
        row("lacks a file", archiveOf({words}));
        row("directory is too long", archiveOf(QList<Entry>(5000, {QString(250, u'a'), "x"})));
        row("de.dic is empty", archiveOf({rules, {u"de.dic"_qs, ""}}));
        row("de.dic is too large", archiveOf({rules, {u"de.dic"_qs, QByteArray((64 << 20) + 1, '\0')}}));
        row("status 404", "");
        row("offline", good, [this](CannedServer&) { m_device->setOnline(false); });
        row("bytes remaining", good, [](CannedServer& server) { server.setFault({Fault::Kind::Close, 50}); });
        row("Maximum file size", good, [](CannedServer& server) { server.setFault({Fault::Kind::Endless}); });
        row("de.dic is a directory", good, [this](CannedServer&) { put(files("de.dic/in the way=x")); });
        row("hunspell", good, [this](CannedServer&) {
            QDir(directory()).removeRecursively();
            writeFile(m_device->path("/mnt/ext1/system/hunspell"), {});
        });
    }
    void failures() {
        QFETCH(const std::string, archive);
        QFETCH(const Spoil, spoil);
        const QString reason = QString::fromUtf8(QTest::currentDataTag());
        CannedServer server({{archive.empty() ? "/other.zip" : "/de.zip", CannedServer::ok(archive)}});
        server.setAnswer(404, {});
        m_log->allow(u"Can not download"_qs);
        m_log->allow(u"No morphology data from"_qs);
        put(m_old);
        spoil(server);
        const Content before = content();
        QVERIFY(!install(server.url("/de.zip")));
        const QStringList lines = m_log->lines(u"No morphology data from"_qs);
        QVERIFY2(lines.size() == 1 && lines[0].contains(reason), qPrintable(lines.join(u'\n')));
        QTRY_COMPARE(content(), before);
    }

    void noAddresses() {
        m_log->allow(u"Not an address of morphology data"_qs);
        for (const char* const url :
             {"", "undefined", "de.zip", "http:///de.zip", "http://127.0.0.1:1/", "http://127.0.0.1:1/de.exe",
              "http://127.0.0.1:1/..zip", "file:///tmp/de.zip", "http://127.0.0.1:1/DE.zip",
              "http://127.0.0.1:1/%2e%2e%2fde.zip", "http://127.0.0.1:1/de.zip/"})
            QVERIFY2(!install(url), url);
        QCOMPARE(m_log->lines(u"Not an address"_qs).size(), 11);
    }

    void abortedInTheMiddle() {
        m_files.setFault({Fault::Kind::Stall, 1'000'000});
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        m_service->install(m_url);
        QTRY_VERIFY(m_service->progress() > 0.2 && m_service->progress() < 0.95);
        QVERIFY(m_summary->canAbort() && m_summary->runningCount() == 1);
        m_summary->abortAll();
        QVERIFY(!m_service->isRunning() && finished.size() == 1 && !finished[0][0].toBool());
        m_files.setFault({});
        writeFile(directory() + u".ready de/de.aff"_qs, "left by a process that was killed");
        QVERIFY(install(m_url.toStdString())); // while the worker of the first may still be there
        QTRY_COMPARE(content(), m_new);
    }

    void killedAtAnyMoment() {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(QProcess::execute(m_program, {u"--install"_qs, m_url}), 0);
        QCOMPARE(content(), m_new);
        Content older;
        const auto start = [&](QProcess& process) {
            older = older.isEmpty() ? m_old : Content();
            put(older);
            process.start(m_program, {u"--install"_qs, m_url});
            process.waitForStarted();
        };
        const auto check = [&] {
            Content visible = content();
            visible.removeIf([](const Content::iterator& file) { return file.key().startsWith(u'.'); });
            QVERIFY(visible.size() < 2 || visible == older || visible == m_new);
            QCOMPARE(QProcess::execute(m_program, {u"--install"_qs}), 0);
            QVERIFY(content() == older || content() == m_new);
        };
        QCOMPARE(tests::killAtAnyMoment(60, timer.nsecsElapsed(), start, check), 60);
    }

    void aStartFinishesWhatWasReady() {
        // As they follow each other.
        const std::pair<const char*, const char*> states[] = {
            {"de.aff=old,de.dic=old,.new-1-1/de.aff=ru", "de.aff=old,de.dic=old"},
            {"de.aff=old,de.dic=old,.ready de/de.aff=rules,.ready de/de.dic=words",
             "de.aff=rules,de.dic=words"},
            {"de.dic=old,.ready de/de.aff=rules,.ready de/de.dic=words", "de.aff=rules,de.dic=words"},
            {"de.dic=words,.ready de/de.aff=rules,.ready de/de.zip=archive", "de.aff=rules,de.dic=words"},
            {"de.aff=rules,de.dic=words,.ready de/de.zip=archive", "de.aff=rules,de.dic=words"}};
        for (const auto& [left, expected] : states) {
            put(files(left));
            QCOMPARE(QProcess::execute(m_program, {u"--install"_qs}), 0);
            QVERIFY2(content() == files(expected), left);
        }
        // The rules go first and come last.
        put(files("de.aff=old,de.dic/in the way=x,.ready de/de.aff=rules,.ready de/de.dic=words"));
        QCOMPARE(QProcess::execute(m_program, {u"--install"_qs}), 0);
        QVERIFY(!content().contains(u"de.aff"_qs));
    }

private:
    [[nodiscard]] QString directory() const { return m_device->path("/mnt/ext1/system/hunspell/"); }
    [[nodiscard]] Content content() const { return folderContent(directory()); }
    /// Nothing else is there then. The folder itself stays: the first service looks for leftovers there.
    void put(const Content& content) const {
        QDir().mkpath(directory());
        for (const QFileInfo& entry :
             QDir(directory()).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
            entry.isDir() ? QDir(entry.filePath()).removeRecursively() : QFile::remove(entry.filePath());
        for (auto file = content.begin(); file != content.end(); ++file)
            writeFile(directory() + file.key(), file.value());
    }

    /// With what success.
    bool install(const std::string& url) {
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        m_service->install(QString::fromStdString(url));
        const bool hasEnded = QTest::qWaitFor([&] { return !finished.isEmpty(); }, 20'000);
        return hasEnded && !m_service->isRunning() && finished.size() == 1 && finished[0][0].toBool();
    }

    const QString m_program = QCoreApplication::applicationFilePath();
    const Content m_old = files("de.aff=old rules,de.dic=old words");
    const Content m_new{{u"de.aff"_qs, noise(400'000)}, {u"de.dic"_qs, noise(1'500'000)}};
    CannedServer m_files{{{"/de.zip", CannedServer::ok(archiveOf(
                                          {{u"de.aff"_qs, m_new.first()}, {u"de.dic"_qs, m_new.last()}}))}}};
    const QString m_url = QString::fromStdString(m_files.url("/de.zip"));
    std::optional<fixture::TestDevice> m_device;
    std::optional<LogWatch> m_log;
    std::unique_ptr<TsiInstallationSummary> m_summary;
    std::unique_ptr<TsiInstallationService> m_service;
};

int main(int argc, char** argv) {
    if (argc > 1 && QByteArray(argv[1]) == "--install")
        return install(argc, argv);
    QCoreApplication application(argc, argv);
    MorphologyTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "morphology_test.moc"
