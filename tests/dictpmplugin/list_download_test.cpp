#include "dictionary_files.h"
#include "signal_recorder.h"

#include <dictionaries/routes.h>
#include <dictpmplugin/dictionarieslistmodel.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/log_watch.h>
#include <vellum/device_state.h>

#include <QAbstractItemModelTester>
#include <QDir>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>
#include <optional>

using namespace tessaly;
using dictionary::DictionariesListModel;

/// Download mode with the real server, which offers what is installed on this machine.
class ListDownloadTest : public QObject {
    Q_OBJECT

    fixture::TestDevice m_device;
    std::optional<LogWatch> m_watch;
    std::optional<DictionariesListModel> m_model;
    std::optional<QAbstractItemModelTester> m_tester;
    std::optional<SignalRecorder> m_signals;
    std::vector<dictionary::DictionaryInfo> m_offered;

    void set(const char* key, const QJsonValue& value) {
        m_device.server().setSwitches({{QString::fromUtf8(key), value}});
    }
    int catalogueRequests() { return m_device.server().status()[u"requests"][u"catalogue"].toInt(); }
    void install(const std::string& file) const {
        tests::writeDictionary(m_device.path(tests::dictionaryFolder) + QString::fromStdString(file), {});
    }
    /// All but the first are no longer on offer, and that one is installed.
    void installOffered() {
        QJsonArray unlisted;
        for (auto info = m_offered.begin() + 1; info != m_offered.end(); ++info)
            unlisted.append(info->serverId);
        set("unlisted", unlisted);
        install(m_offered.front().file);
    }

private Q_SLOTS:
    void initTestCase() {
        m_device.startServer();
        m_device.setOnline(true);
        m_offered = dictionary::Routes::listDictionaries(dictionary::default_base_url()).getRight();
        QVERIFY(m_offered.size() > 10);
    }
    void init() {
        m_device.server().resetSwitches();
        m_device.setServerUrl(m_device.server().url());
        m_device.setOnline(true);
        QDir(m_device.path("/mnt/ext1/system/tsdicts")).removeRecursively();
        QDir(m_device.path(tests::dictionaryFolder)).removeRecursively();
        for (const char* folder : {"/mnt/ext1/system/tsdicts", tests::dictionaryFolder})
            QDir().mkpath(m_device.path(folder));
        m_watch.emplace();
        m_model.emplace();
        m_tester.emplace(&*m_model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        m_signals.emplace(&*m_model);
    }
    void cleanup() {
        const QString unexpected = m_watch->unexpected().join(u'\n');
        m_signals.reset();
        m_tester.reset();
        m_model.reset();
        QSqlDatabase::removeDatabase(tests::catalogueConnection);
        m_watch.reset();
        QCOMPARE(unexpected, QString());
    }

    void ends_data() {
        QTest::addColumn<std::function<void()>>("prepare");
        QTest::addColumn<QString>("recorded");
        const auto row = [](const char* what, const std::function<void()>& prepare, const char* recorded) {
            QTest::newRow(what) << prepare << QString::fromUtf8(recorded);
        };
        const auto catalogue = [this](const char* mode) {
            return [this, mode] { set("catalogue", QString::fromUtf8(mode)); };
        };
        const auto shown =
            "isConnectingToNetChanged(true) isConnectingToNetChanged(false) modelAboutToBeReset() "
            "isDownloadModeChanged(true) modelReset() modelRefreshed()";
        row(
            "new ones", [] {}, shown);
        row(
            "languages without a name",
            [this] {
                m_watch->allow(u"No display text for language"_qs);
                m_watch->allow(u"language_from is left out"_qs);
                set("catalogue", u"extra_languages"_qs);
            },
            shown);
        row(
            "none new", [this] { installOffered(); },
            "isConnectingToNetChanged(true) noNewDictionaries() toDownloadModFailed()");
        row(
            "no network", [this] { m_device.setOnline(false); },
            "isConnectingToNetChanged(true) dataManagerError(0) toDownloadModFailed()");
        row(
            "no server", [this] { m_device.setServerUrl(u"http://127.0.0.1:1"_qs); },
            "isConnectingToNetChanged(true) dataManagerError(1) toDownloadModFailed()");
        for (const char* mode : {"status:500", "malformed", "wrong_type"})
            row(mode, catalogue(mode),
                "isConnectingToNetChanged(true) dataManagerError(4) toDownloadModFailed()");
    }
    void ends() {
        QFETCH(const std::function<void()>, prepare);
        QFETCH(const QString, recorded);
        prepare();
        QSignalSpy refreshed(&*m_model, &DictionariesListModel::modelRefreshed);
        QSignalSpy failed(&*m_model, &DictionariesListModel::toDownloadModFailed);
        const int requests = catalogueRequests();
        m_model->toDownloadMode();
        QTRY_VERIFY(refreshed.size() + failed.size() > 0);
        QCOMPARE(m_signals->take().join(u' '), recorded);
        const bool isSuccess = recorded.endsWith(u"modelRefreshed()");
        QCOMPARE(m_model->isDownloadMode(), isSuccess);
        QCOMPARE(m_model->isConnectingToNet(), !isSuccess); // stays set, on purpose
        if (!isSuccess)
            return;
        QCOMPARE(catalogueRequests() - requests, 2);
        QVERIFY(m_model->getCount() >= int(m_offered.size()));
        for (int row = 1; row < m_model->getCount(); ++row) {
            const auto names = [&](int of) {
                return m_model->getLanguageFrom(of) + m_model->getLanguageTo(of);
            };
            QVERIFY2(names(row - 1) <= names(row), qPrintable(names(row)));
        }
        m_model->toggleSelected(1);
        m_model->refreshData();
        QCOMPARE(m_signals->take().join(u' '),
                 u"selectedCountChanged() modelAboutToBeReset() isDownloadModeChanged(false) "
                 "showEmptyScreen() modelReset()"_qs);
    }

    void refusesWhatComesMeanwhile() {
        install("a.tsdict");
        m_model->refreshData();
        vellum::state::setDebugMode(true);
        set("delay_ms", 200);
        const int requests = catalogueRequests();
        m_signals->take();
        for (int i = 0; i < 3; ++i) {
            m_model->toDownloadMode();
            m_model->refreshData();
            m_model->handleToDownloadModeFinished();
            m_model->dump();
            QTest::qWait(50);
        }
        QCOMPARE(m_signals->take().join(u' '), u"isConnectingToNetChanged(true)"_qs);
        QCOMPARE(m_model->getCount(), 1);
        QTRY_VERIFY(m_model->isDownloadMode());
        QCOMPARE(catalogueRequests() - requests, 2);
        QCOMPARE(m_model->getCount(), int(m_offered.size()));
        const QString count = QString::number(m_offered.size());
        QCOMPARE(m_watch->lines(u"DICTS FROM NET (%1)\n"_qs.arg(count)).size(), 1);
        QCOMPARE(m_watch->lines(u"(%1) - INSTALLED DICTIONARIES (1)\t{ name: a,"_qs.arg(count)).size(), 1);
        vellum::state::setDebugMode(false);
    }

    void waitsForTheRefreshThatAsks() {
        install("a.tsdict");
        connect(
            &*m_model, &QAbstractItemModel::modelReset, this, [this] { m_model->toDownloadMode(); },
            Qt::SingleShotConnection);
        m_model->refreshData();
        QVERIFY(!m_model->isConnectingToNet());
        QTRY_VERIFY(m_model->isDownloadMode());
    }
};

QTEST_GUILESS_MAIN(ListDownloadTest)
#include "list_download_test.moc"
