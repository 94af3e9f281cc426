#include "dictionary_files.h"
#include "script.h"
#include "signal_recorder.h"

#include <dictpmplugin/dictionarieslistmodel.h>
#include <dictpmplugin/dictpmcontroller.h>
#include <platform/vellum/testing.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/log_watch.h>
#include <utilities/cfg_wrapper.h>
#include <vellum/clock.h>
#include <vellum/device_state.h>

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>
#include <QThreadPool>
#include <csignal>
#include <optional>

using namespace tessaly;
using dictionary::DictionariesListModel;
using dictionary::DictPMController;

namespace {

constexpr auto installer = "/ebrmain/bin/dictpackageinstaller.app";
constexpr auto statusFile = "/mnt/ext1/system/tsdicts/installer_out_code.txt";
const auto installed = u"1 2 3 4 8 syncFinished(true)"_qs;
const auto notInstalled = u"1 2 3 4 7 error(%1) syncFinished(false) fatalError()"_qs;

DictionariesListModel& model() {
    return *DictionariesListModel::instance();
}
DictPMController& controller() {
    return *DictPMController::instance();
}

} // namespace

/// The whole way from the marks to the installed dictionaries, with the real server and mostly the real
/// installer. One device for all, since the objects under test live as long as the process.
class PackageDownloadTest : public QObject {
    Q_OBJECT

    fixture::TestDevice m_device;
    std::optional<LogWatch> m_watch;
    std::optional<SignalRecorder> m_signals;
    QList<int> m_progress;
    Script m_script;

    /// "KEY VALUE", or "reset".
    void set(const QString& text) {
        const QString value = text.section(u' ', 1);
        bool isNumber = false;
        const int number = value.toInt(&isNumber);
        m_device.server().setSwitches({{text.section(u' ', 0, 0), value.isEmpty() ? QJsonValue(true)
                                                                  : isNumber      ? QJsonValue(number)
                                                                                  : QJsonValue(value)}});
    }
    QStringList filesIn(const char* folder) const {
        return QDir(m_device.path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    void empty(const char* folder) const {
        QDir(m_device.path(folder)).removeRecursively();
        QDir().mkpath(m_device.path(folder));
    }
    /// What was recorded, with numbers for the states and without what comes when the timer ticks.
    QString story() {
        QStringList recorded = m_signals->take();
        recorded.removeIf([](const QString& text) {
            return text.startsWith(u"progressChanged") || text.startsWith(u"isInstallingChanged");
        });
        QString text = recorded.join(u' ');
        text.replace(QRegularExpression(u"syncStateChanged\\((\\d)\\)"_qs), u"\\1"_qs);
        return text.replace(u"errorTypeChanged"_qs, u"error"_qs);
    }
    void useStandIn(const QString& acts) const {
        qputenv("TESSALY_INSTALLER_ACTS", acts.toUtf8());
        QFile::remove(m_device.path(installer));
        QVERIFY(QFile::copy(QStringLiteral(STAND_IN_INSTALLER), m_device.path(installer)));
    }
    static void markTwo() {
        model().refreshData();
        model().toDownloadMode();
        QTRY_VERIFY(model().isDownloadMode());
        for (int row = 0; row < model().getCount(); ++row) {
            if (model().getLanguageFrom(row, true) == u"cs" || model().getLanguageFrom(row, true) == u"sr")
                model().toggleSelected(row);
        }
        QCOMPARE(model().selectedCount(), 2);
    }
    static void waitForEnd() {
        QTRY_VERIFY_WITH_TIMEOUT(controller().syncState() >= 5, 20000);
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    }
    void addSteps() {
        m_script.add("start", [](const QString&) { controller().downloadPackageProcess(); });
        m_script.add("again", [](const QString&) { controller().reDownloadPackageProcess(); });
        m_script.add("cancel", [](const QString&) { controller().cancelDownloading(); });
        m_script.add("until", [](const QString& state) {
            QTRY_COMPARE_WITH_TIMEOUT(controller().syncState(), state.toInt(), 20000);
            vellum::testing::takeSleeps();
        });
        m_script.add("wait", [](const QString& milliseconds) { QTest::qWait(milliseconds.toInt()); });
        m_script.add("asleep", [](const QString&) {
            bool hasSlept = false;
            QTRY_VERIFY(hasSlept = hasSlept || !vellum::testing::takeSleeps().empty());
        });
        m_script.add("loading",
                     [this](const QString&) { QTRY_COMPARE(filesIn("/mnt/ext1/Downloads").size(), 1); });
        m_script.add("free",
                     [](const QString&) { QVERIFY(QThreadPool::globalInstance()->waitForDone(1000)); });
        m_script.add("block", [](const QString&) { QThreadPool::globalInstance()->waitForDone(); });
        m_script.add("real-time", [](const QString&) { vellum::clock::setSpeed(1); });
        m_script.add("unmark", [](const QString&) { model().refreshData(); });

        m_script.add("set", [this](const QString& text) { set(text); });
        m_script.add("stop-server", [this](const QString&) { m_device.server().stop(); });
        m_script.add("offline", [this](const QString&) { m_device.setOnline(false); });
        m_script.add("disconnected", [](const QString&) { vellum::state::setNetState(0); });
        m_script.add("space", [](const QString& bytes) { vellum::state::setSecureFreeBytes(bytes.toInt()); });

        m_script.add("no-installer", [this](const QString&) { QFile::remove(m_device.path(installer)); });
        m_script.add("stand-in", [this](const QString& acts) { useStandIn(acts); });
        m_script.add("acts", [](const QString& acts) { qputenv("TESSALY_INSTALLER_ACTS", acts.toUtf8()); });
        m_script.add("older-host", [](const QString& package) {
            const QByteArray path = package.toUtf8();
            const char* const arguments[] = {"-package_name", path.constData()};
            QVERIFY(OpenTask(installer, 2, arguments, 1) > 0);
        });
        m_script.add("kill", [](const QString&) {
            const int task = FindTaskByAppName(installer);
            QVERIFY(task > 0 && ::kill(task, SIGKILL) == 0); // -1 would be every process there is
        });
        m_script.add("old-success", [](const QString&) {
            utilities::CfgWrapper status(statusFile, 1);
            WriteInt(status.handle(), "out_code", 0);
            WriteInt(status.handle(), "progress", 100);
            QVERIFY(status.saveAndClose());
        });
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(QFile::copy(m_device.path(installer), m_device.path("/var/installer")));
        addSteps();
        connect(&controller(), &DictPMController::progressChanged, this,
                [this](int value) { m_progress << value; });
    }
    void init() {
        m_device.startServer();
        m_device.server().resetSwitches();
        m_device.setOnline(true);
        vellum::state::setSecureFreeBytes(-1);
        for (const char* folder : {"/mnt/ext1/Downloads", "/mnt/secure/tspk", tests::dictionaryFolder})
            empty(folder);
        for (const char* name : {"/mnt/secure/tspk/a ts dictionaries b", "/mnt/secure/tspk/other"})
            QVERIFY(QFile(m_device.path(name)).open(QIODevice::WriteOnly));
        QFile::remove(m_device.path(statusFile));
        QFile::remove(m_device.path(installer));
        QVERIFY(QFile::copy(m_device.path("/var/installer"), m_device.path(installer)));
        vellum::clock::setSpeed(20);
        m_watch.emplace();
        // By hand, without a run: back to the start.
        controller().setSyncState(6);
        controller().handleDownloadFinished();
        controller().setSyncState(0);
        controller().setErrorType(0);
        markTwo();
        m_signals.emplace(&controller());
        vellum::testing::takeSleeps();
        m_progress.clear();
    }
    void cleanup() {
        const QString unexpected = m_watch->unexpected().join(u'\n');
        m_signals.reset();
        m_watch.reset();
        m_device.server().stop();
        QCOMPARE(unexpected, QString());
    }

    /// Before any other, since the animation plays once in the life of the process.
    void waits() {
        for (int call = 0; call < 40; ++call) {
            controller().setSyncState(call < 14 ? 1 : 2);
            controller().handleWaitingDownloadProgress();
        }
        QCOMPARE(m_progress, QList<int>({1, 2, 3, 4, 5, 7, 8, 9, 10}));
    }

    void ends_data() {
        QTest::addColumn<QString>("told"); // the row's name is the script
        QTest::addColumn<QString>("logged");
        const auto row = [](const char* script, const QString& told, const QString& logged = {}) {
            QTest::newRow(script) << told << logged;
        };
        const auto failing = [&row](const char* script, int code) {
            row(script, notInstalled.arg(code == -10 ? 7 : 6),
                u"Error installing dictionaries (code: %1)."_qs.arg(code));
        };
        row("again", installed); // before any request
        row("start", installed);
        row("set package_build_ms 1000; start", installed);

        row("disconnected; start", installed);
        row("unmark; start", u"1 error(1) 5"_qs);
        row("set package_request wait; start", u"1 error(2) 5"_qs);
        row("set package_request malformed; start", u"1 error(3) 5"_qs);
        row("stop-server; start", u"1 error(3) 5"_qs);
        row("set package_state malformed; start", u"1 2 error(5) 5"_qs);
        row("set package_state wait; start", u"1 2 error(2) 5"_qs);
        row("offline; start; again", {});
        row("set package_state wait; start; until 5; set reset; again; until 8",
            u"1 2 error(2) 5 2 error(0) 3"_qs + installed.mid(5));

        failing("set package_fault damaged; start", -11);
        failing("set package_fault wrong_size; start", -3);
        failing("set bytes_per_second 20000; start; loading; stop-server", -3);
        failing("space 1000; start", -10);
        failing("no-installer; start", -1);
        failing("stand-in 0.1 -7; start", -7);
        failing("old-success; stand-in 0.3; start", -1);
        failing("stand-in 60 -1 40; start; until 4; kill", -1);
        row("stand-in 0.5 0; start; until 4; stop-server; until 8", installed); // without a report
        row("stand-in 60 0 100; start", installed); // one that says it is done and doesn't end

        // While the installer of a host that was killed is at work; for too long in the end.
        failing("stand-in 0 0 100 0.6; older-host /old; acts 1 -7; start", -7);
        failing("stand-in 60; older-host /old; start; until 7; kill", -1);

        // Each gives its thread back at once.
        row("set delay_ms 5000; start; wait 50; cancel; free", u"1 6"_qs);
        row("real-time; set package_state wait; start; asleep; cancel; free", u"1 2 6"_qs);
        row("set bytes_per_second 4000; start; loading; wait 50; cancel; free", u"1 2 3 6"_qs);
        row("set bytes_per_second 4000; start; loading; set reset; start", u"1 2 3 "_qs + installed);
        row("start; block; cancel", u"1 6 2 3"_qs); // what the worker had told arrives late
        row("stand-in 0.3 0; start; until 4; cancel; until 8", u"1 2 3 4 6 8 syncFinished(true)"_qs);
        // While the old worker sleeps, and while the old package is still being installed.
        row("real-time; set package_state wait; start; asleep; cancel; set reset; start; until 8; wait 100",
            u"1 2 6 "_qs + installed);
        row("stand-in 0.6 0; start; until 4; set package_state wait; start; wait 1000; cancel",
            u"1 2 3 4 1 2 6"_qs);
        row("stand-in 0.6 0; start; until 4; wait 150; acts 0 0; start; until 8", u"1 2 3 4 "_qs + installed);
    }
    void ends() {
        const QString script = QString::fromUtf8(QTest::currentDataTag());
        QFETCH(const QString, told);
        for (const QString& text :
             {u"Error installing dictionaries"_qs, u"Can not download"_qs, u"Can not start"_qs})
            m_watch->allow(text);
        m_script.run(script);
        if (!told.isEmpty())
            waitForEnd();
        if (told.endsWith(u'5') || told.endsWith(u'6'))
            QTRY_COMPARE(controller().progress(), 0);
        QTRY_VERIFY(FindTaskByAppName(installer) == -1);
        QCOMPARE(story(), told);
        QTEST(m_watch->lines(u"Error installing"_qs).join(u' '), "logged");
        QCOMPARE(filesIn("/mnt/ext1/Downloads"), QStringList());
        const bool isInstalled = controller().syncState() == 8 && !script.contains(u"stand-in"_qs);
        QStringList packages = filesIn("/mnt/secure/tspk");
        if (!isInstalled)
            packages.removeAll(u"a ts dictionaries b"_qs); // an old one goes when the next is installed
        QCOMPARE(packages, QStringList(u"other"_qs));
        QCOMPARE(filesIn(tests::dictionaryFolder).size(), isInstalled ? 2 : 0);
        // What a run left to its installer is reported, too.
        const auto reports = told.count(u'8') + script.count(u"stand-in 0.6 0;"_qs);
        if (reports > 0 && !script.contains(u"stop-server"))
            QCOMPARE(m_device.server().status()[u"reported"].toArray().size(), reports);
        if (script.contains(u"reset; again"_qs)) // for the package that was asked for before
            QVERIFY(!m_device.server().status()[u"requests"].toObject().contains(u"package_request"));
        if (told == u"1 2 error(2) 5") {
            QCOMPARE(vellum::testing::takeSleeps(),
                     std::vector<int>({2000, 2000, 2000, 2000, 2000, 5000, 5000, 5000, 5000, 5000}));
        }
        QCOMPARE(controller().isInstalling(), 90 <= controller().progress() && controller().progress() <= 95);
        controller().handleDownloadFinished(); // by hand, after its end: does no harm
        QCOMPARE(story(), QString());
    }

    void showsProgress() {
        m_watch->allow(u"Error installing dictionaries"_qs);
        m_script.run(
            u"stand-in 0.1 -7; start; until 7; acts 0.5 0 60; real-time; set bytes_per_second 30000"_qs);
        QVERIFY(controller().progress() >= 90 && controller().isInstalling());
        m_signals->take();
        m_progress.clear();
        controller().downloadPackageProcess();
        QVERIFY(controller().progress() == 0 && !controller().isInstalling());
        controller().handleDownloadProgress();
        QCOMPARE(controller().progress(), 10);
        QTRY_COMPARE_WITH_TIMEOUT(controller().syncState(), 4, 20000);
        QVERIFY(controller().isInstalling());
        QElapsedTimer sinceStart;
        sinceStart.start();
        QTRY_COMPARE(controller().syncState(), 8);
        QVERIFY(sinceStart.elapsed() >= 1150); // it is looked at after 200 ms, and 1000 later
        const QString told = m_signals->take().join(u' ');
        QCOMPARE(told.mid(told.indexOf(u"progressChanged(93)")),
                 u"progressChanged(93) progressChanged(95) isInstallingChanged(false) progressChanged(98) "
                 "syncStateChanged(8) progressChanged(100) syncFinished(true) progressChanged(0)"_qs);
        QCOMPARE(m_progress.takeLast(), 0);
        QVERIFY(std::is_sorted(m_progress.begin(), m_progress.end()));
        QVERIFY(std::any_of(m_progress.begin(), m_progress.end(),
                            [](int value) { return 10 < value && value < 90; }));
        controller().handleDownloadProgress(); // of the whole package
        QCOMPARE(controller().progress(), 90);
    }
};

QTEST_GUILESS_MAIN(PackageDownloadTest)
#include "package_download_test.moc"
