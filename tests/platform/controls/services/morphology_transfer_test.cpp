#include "transfer_fixture.h"

#include <dictionaries/morph_explorer.h>
#include <vellum/device_state.h>

#include <QQmlComponent>
#include <QQmlEngine>

using namespace tessaly;
using tests::CannedServer;
using tests::TsiInstallationService;
using tests::TsiInstallationSummary;

/// What a transfer is to those who watch it, from its start to its end.
class MorphologyTransferTest : public tests::TransferFixture {
    Q_OBJECT

private Q_SLOTS:
    void installsFromTheServer() {
        m_device->startServer();
        vellum::state::setNetState(0); // reachable: it connects
        const dictionary::MorphExplorer explorer(QStringLiteral("/mnt/ext1/system/hunspell"));
        QVERIFY(!explorer.exists(QStringLiteral("en_GB")));
        m_device->write(QStringLiteral("en.aff"), "older rules");
        QVERIFY(install(m_device->server().url() + QStringLiteral("/v1/morphology/en.zip")));
        QCOMPARE(m_service->errorText(), QString());
        QCOMPARE(m_device->content().keys(), (QStringList{u"en.aff"_qs, u"en.dic"_qs}));
        for (const QString& ending : {u".aff"_qs, u".dic"_qs})
            QCOMPARE(m_device->content()[u"en"_qs + ending],
                     readFile(u"/usr/share/hunspell/en_US"_qs + ending));
        QVERIFY(explorer.exists(QStringLiteral("en_GB")));
    }

    void abortedInTheMiddle_data() {
        QTest::addColumn<bool>("all");
        QTest::newRow("by the service") << false;
        QTest::newRow("by the summary") << true;
    }
    void abortedInTheMiddle() {
        QFETCH(const bool, all);
        m_device->write(u"de.aff"_qs, "older rules");
        m_files.setFault({fixture::Fault::Kind::Stall, 1'000'000});
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        m_service->install(m_url);
        QTRY_VERIFY(m_service->progress() > 0.2 && m_service->progress() < 0.95);
        QVERIFY(m_service->canAbort() && m_summary->canAbort() && m_summary->runningCount() == 1);
        QCOMPARE(vellum::activeSleepPreventors(), 1);
        if (all)
            m_summary->abortAll();
        else
            m_service->abort();
        QVERIFY(!m_service->isRunning() && !m_service->canAbort() && m_summary->runningCount() == 0);
        QVERIFY(finished.size() == 1 && !finished[0][0].toBool());
        m_service->abort();
        m_files.setFault({}); // and at once again, while the worker of the first may still be there
        QVERIFY(install(m_url));
        QTRY_COMPARE(m_device->content().keys(), (QStringList{u"de.aff"_qs, u"de.dic"_qs}));
    }

    void aTransferOutlivesItsTile() {
        m_files.setFault({fixture::Fault::Kind::None, 0, 2'000'000});
        const int before = m_files.requests();
        m_service->install(m_url);
        QTRY_VERIFY(m_service->progress() > 0.2);
        const double progress = m_service->progress();
        m_service.reset();
        QVERIFY(m_summary->runningCount() == 1 && m_summary->canAbort());

        m_service = newService();
        QVERIFY(!m_service->isRunning());
        m_service->setUrl(m_url);
        QVERIFY(m_service->isRunning() && m_service->canAbort() && m_service->progress() >= progress);
        TsiInstallationSummary later;
        const auto another = newService();
        another->setSummary(&later);
        QSignalSpy counts(&later, &TsiInstallationSummary::runningCountChanged);
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        QVERIFY(install(m_url, another.get())); // the same transfer
        QVERIFY(finished.size() == 1 && finished[0][0].toBool());
        QVERIFY(counts.size() == 2 && later.runningCount() == 0);
        QCOMPARE(m_files.requests(), before + 1);
    }

    void theSummaryMayGoFirst() {
        m_service->install(m_url);
        m_summary = std::make_unique<TsiInstallationSummary>();
        QVERIFY(m_service->isRunning() && !m_service->summary());
        QSignalSpy finished(m_service.get(), &TsiInstallationService::finished);
        QVERIFY(finished.wait() && finished[0][0].toBool());
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

    void qmlKnowsTheTypes() {
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral(TESSALY_QML_DIR));
        QQmlComponent component(&engine);
        component.setData(
            "import QtQml\n import com.tessaly.controls.services 1.0\n QtObject {"
            "property bool ended: false; property string key; property var nothing: undefined;"
            "property var summary: TsiInstallationSummary {}\n"
            "property var service: TsiInstallationService { summary: parent.summary; url: nothing;"
            "onFinished: success => ended = !success;"
            "apiKeyProvider: QtObject { function apiKey() { return 'a' + (key = 'k') } } }\n"
            "id: parent }",
            {});
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        auto* const service = object->property("service").value<TsiInstallationService*>();
        QVERIFY(service && service->summary());
        m_log->allow(u"Not an address of morphology data"_qs);
        QMetaObject::invokeMethod(service, "install", Q_ARG(QString, QString()));
        QCOMPARE(object->property("ended"), QVariant(true));
        QVERIFY(install(m_url, service));
        QCOMPARE(object->property("key"), QVariant(u"k"_qs));
    }

private:
    /// Installs, and says with what success. While it runs, the summary counts it.
    bool install(const QString& url, TsiInstallationService* service = nullptr) {
        service = service ? service : m_service.get();
        QSignalSpy finished(service, &TsiInstallationService::finished);
        service->install(url);
        const bool hasBegun = service->isRunning() && service->summary()->runningCount() == 1;
        const bool hasEnded = QTest::qWaitFor([&] { return !finished.isEmpty(); }, 20'000);
        const bool isOver = !service->isRunning() && service->summary()->runningCount() == 0;
        return hasBegun && hasEnded && isOver && finished.size() == 1 && finished[0][0].toBool();
    }
};

QTEST_GUILESS_MAIN(MorphologyTransferTest)
#include "morphology_transfer_test.moc"
