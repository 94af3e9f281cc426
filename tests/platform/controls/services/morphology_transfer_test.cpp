#include "morphology_device.h"

#include <dictionaries/morph_explorer.h>
#include <platform/vellum/testing.h>
#include <services/tsi_installation_service.h>
#include <tests/support/log_watch.h>
#include <vellum/device_state.h>

#include <QSignalSpy>
#include <QTest>
#include <functional>
#include <memory>
#include <optional>

using namespace tessaly;
using fixture::Fault;
using services::TsiInstallationService;
using services::TsiInstallationSummary;
using tests::archiveOf;
using tests::CannedServer;
using Entry = tests::PackageBuilder::Entry;
using Kind = tests::PackageBuilder::Kind;
using Spoil = std::function<void(CannedServer&)>;

Q_DECLARE_METATYPE(Spoil)

/// Transfers from their start to their end, as those see them who watch.
class MorphologyTransferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_files.setFault({});
        m_device.emplace();
        m_log.emplace();
        m_summary = std::make_unique<TsiInstallationSummary>();
        m_service = newService();
    }
    void cleanup() {
        QTRY_COMPARE(vellum::testing::activeSleepPreventors(), 0); // no worker is left
        QVERIFY(m_summary->runningCount() == 0 && m_summary->canAbort());
        m_service.reset();
        QCOMPARE(m_log->unexpected(), QStringList());
        m_log.reset();
        m_device.reset();
    }

    void installsFromTheServer() {
        m_device->startServer();
        vellum::state::setNetState(0); // reachable: it connects
        m_device->write(u"en.aff"_qs, "older rules");
        QVERIFY(install(m_device->server().url() + u"/v1/morphology/en.zip"_qs));
        const QString source = u"/usr/share/hunspell/en_US"_qs;
        const QMap<QString, QByteArray> expected{{u"en.aff"_qs, readFile(source + u".aff"_qs)},
                                                 {u"en.dic"_qs, readFile(source + u".dic"_qs)}};
        QCOMPARE(m_device->content(), expected);
    }

    /// Each with a part of the reason that the log gives, and nothing changed on the device.
    void failures_data() {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<Spoil>("spoil");
        const QByteArray good = archiveOf("new rules", tests::noise(5000));
        const auto row = [](
                             const char* reason, const QByteArray& archive,
                             const Spoil& spoil = [](CannedServer&) {}) {
            QTest::addRow("%s", reason) << archive << spoil;
        };
        const Entry rules{u"de.aff"_qs, "rules"};
        const Entry words{u"de.dic"_qs, "words"};
        row("damaged", "no zip");
        row("damaged", good.chopped(30));
        row("damaged", QByteArray(good).replace(good.size() / 2, 1, "x"));
        row("\"../de.aff\", which isn't of \"de\"", archiveOf({rules, words, {u"../de.aff"_qs, "rules"}}));
        row("\"fr.aff\", which isn't of \"de\"", archiveOf({{u"fr.aff"_qs, "rules"}}));
        row("\"de.aff\", which isn't of \"de\" or is there twice", archiveOf({rules, rules, words}));
        row("plain files", archiveOf({rules, {u"de.dic"_qs, "/etc/passwd", Kind::Link}}));
        row("plain files", archiveOf({rules, words, {u"de"_qs, "", Kind::Folder}}));
        row("lacks a file", archiveOf({words}));
        row("de.dic is empty", archiveOf(rules.content, ""));
        row("de.dic is too large", archiveOf(rules.content, QByteArray((64 << 20) + 1, '\0')));
        row("status 404", good);
        row("offline", good, [this](CannedServer&) { m_device->setOnline(false); });
        row("bytes remaining", good, [](CannedServer& server) { server.setFault({Fault::Kind::Close, 50}); });
        row("Maximum file size", good, [](CannedServer& server) { server.setFault({Fault::Kind::Endless}); });
        row("de.dic is a directory", good, [this](CannedServer&) {
            QFile::remove(m_device->directory() + u"de.dic"_qs);
            QDir(m_device->directory()).mkdir(u"de.dic"_qs);
        });
        row("hunspell", good, [this](CannedServer&) {
            QDir(m_device->directory()).removeRecursively();
            writeFile(m_device->path("/mnt/ext1/system/hunspell"), {});
        });
    }
    void failures() {
        QFETCH(const QByteArray, archive);
        QFETCH(const Spoil, spoil);
        const QString reason = QString::fromUtf8(QTest::currentDataTag());
        const bool isKnown = reason != u"status 404"_qs;
        CannedServer server({{isKnown ? "/de.zip" : "/other.zip", CannedServer::ok(archive.toStdString())}});
        server.setAnswer(404, {});
        m_log->allow(u"Can not download"_qs);
        m_log->allow(u"No morphology data from"_qs);
        m_device->write(u"de.aff"_qs, "older rules");
        m_device->write(u"de.dic"_qs, "older words");
        spoil(server);
        const auto before = m_device->content();
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        m_service->install(QString::fromStdString(server.url("/de.zip")));
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 20'000);
        QVERIFY(!finished[0][0].toBool() && !m_service->isRunning());
        const QStringList lines = m_log->lines(u"No morphology data from"_qs);
        QVERIFY2(lines.size() == 1 && lines[0].contains(reason), qPrintable(lines.join(u'\n')));
        QTRY_COMPARE(m_device->content(), before);
    }

    void noAddresses() {
        m_log->allow(u"Not an address of morphology data"_qs);
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        int refused = 0;
        for (const char* const url :
             {"", "undefined", "de.zip", "http:///de.zip", "http://127.0.0.1:1/", "http://127.0.0.1:1/de.exe",
              "http://127.0.0.1:1/..zip", "file:///tmp/de.zip", "http://127.0.0.1:1/DE.zip",
              "http://127.0.0.1:1/%2e%2e%2fde.zip", "http://127.0.0.1:1/de.zip/"}) {
            m_service->install(QString::fromUtf8(url));
            QVERIFY2(finished.size() == ++refused && !finished.last()[0].toBool(), url);
        }
        QCOMPARE(m_log->lines(u"Not an address"_qs).size(), refused);
    }

    void abortedInTheMiddle() {
        for (const bool all : {false, true}) {
            m_files.setFault({Fault::Kind::Stall, 1'000'000});
            QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
            m_service->install(m_url); // the second time while the worker of the first may still be there
            QTRY_VERIFY(m_service->progress() > 0.2 && m_service->progress() < 0.95);
            QVERIFY(m_service->canAbort() && m_summary->canAbort() && m_summary->runningCount() == 1);
            QVERIFY(vellum::testing::activeSleepPreventors() > 0);
            all ? m_summary->abortAll() : m_service->abort();
            QVERIFY(!m_service->isRunning() && !m_service->canAbort() && m_summary->runningCount() == 0);
            QVERIFY(finished.size() == 1 && !finished[0][0].toBool());
        }
        m_files.setFault({});
        QVERIFY(install(m_url));
        QTRY_COMPARE(m_device->content().keys(), (QStringList{u"de.aff"_qs, u"de.dic"_qs}));
    }

    void aTransferOutlivesItsTileAndSummary() {
        m_files.setFault({Fault::Kind::None, 0, 2'000'000});
        const int before = m_files.requests();
        m_service->install(m_url);
        QTRY_VERIFY(m_service->progress() > 0.2);
        m_service.reset();
        QCOMPARE(m_summary->runningCount(), 1);
        m_summary = std::make_unique<TsiInstallationSummary>();

        m_service = newService();
        QVERIFY(!m_service->isRunning());
        m_service->setUrl(m_url);
        QVERIFY(m_service->isRunning() && m_service->canAbort() && m_service->progress() > 0.2);
        const auto another = newService();
        QSignalSpy counts(m_summary.get(), &TsiInstallationSummary::runningCountChanged);
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        QVERIFY(install(m_url, another.get())); // the same transfer
        QVERIFY(finished.size() == 1 && finished[0][0].toBool());
        QCOMPARE(counts.size(), 1);
        QCOMPARE(m_files.requests(), before + 1);
    }

    void itCanNotBeAbortedWhilePlaced() {
        bool wasTooLate = false;
        connect(m_service.get(), &TsiInstallationService::canAbortChanged, this, [&] {
            if (!m_service->isRunning() || m_service->canAbort())
                return;
            wasTooLate = !m_summary->canAbort();
            m_service->abort();
        });
        QVERIFY(install(m_url));
        QVERIFY(wasTooLate);
    }

private:
    [[nodiscard]] std::unique_ptr<TsiInstallationService> newService() {
        auto service = std::make_unique<TsiInstallationService>();
        service->setSummary(m_summary.get());
        service->setProperty("apiKeyProvider", QVariant::fromValue<QObject*>(&m_keys));
        return service;
    }

    /// Installs, and says with what success. While it runs, the summary counts it.
    bool install(const QString& url, TsiInstallationService* service = nullptr) {
        service = service ? service : m_service.get();
        QSignalSpy finished(service, &TsiInstallationService::finished);
        service->install(url);
        const bool hasBegun = service->isRunning() && m_summary->runningCount() == 1;
        const bool hasEnded = QTest::qWaitFor([&] { return !finished.isEmpty(); }, 20'000);
        const bool isOver = !service->isRunning() && m_summary->runningCount() == 0;
        return hasBegun && hasEnded && isOver && finished.size() == 1 && finished[0][0].toBool();
    }

    CannedServer m_files{
        {{"/de.zip", CannedServer::ok(archiveOf("rules", tests::noise(2'000'000)).toStdString())}}};
    const QString m_url = QString::fromStdString(m_files.url("/de.zip"));
    dictionary::MorphSecretProvider m_keys;
    std::optional<tests::MorphologyDevice> m_device;
    std::optional<LogWatch> m_log;
    std::unique_ptr<TsiInstallationSummary> m_summary;
    std::unique_ptr<TsiInstallationService> m_service;
};

QTEST_GUILESS_MAIN(MorphologyTransferTest)
#include "morphology_transfer_test.moc"
