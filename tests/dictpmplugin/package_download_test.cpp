#include "dictionary_files.h"
#include "signal_recorder.h"

#include <common_utilities/device_path.h>
#include <dictpmplugin/dictionarieslistmodel.h>
#include <dictpmplugin/dictpmcontroller.h>
#include <platform/vellum/testing.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>
#include <utilities/cfg_wrapper.h>
#include <vellum/clock.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>
#include <QThreadPool>
#include <csignal>
#include <filesystem>
#include <optional>
#include <sstream>

using namespace tessaly;
using dictionary::DictionariesListModel;
using dictionary::DictPMController;
using Steps = std::function<void()>;

namespace {

constexpr auto installer = "/ebrmain/bin/dictpackageinstaller.app";
constexpr auto statusFile = "/mnt/ext1/system/tsdicts/installer_out_code.txt";
constexpr auto downloads = "/mnt/ext1/Downloads";
const auto installed = u"1 2 3 4 8 syncFinished(true)"_qs;

/// What this program does when it is the installer: "SECONDS", "SECONDS CODE", "SECONDS CODE PERCENT" or
/// "SECONDS CODE PERCENT DELAY". It waits for the delay, writes the result, if there is one (-3 when the
/// package isn't there), and lives on for that long.
int standInForInstaller(const std::string& package) {
    std::istringstream acts(std::getenv("TESSALY_INSTALLER_ACTS"));
    double seconds = 0, delay = 0;
    int code = 0, percent = 0;
    if (acts >> seconds >> code) {
        acts >> percent >> delay;
        QThread::msleep(unsigned(delay * 1000));
        utilities::CfgWrapper status(statusFile, 1);
        WriteInt(status.handle(), "out_code",
                 std::filesystem::exists(openablePath(downloads + package)) ? code : -3);
        WriteInt(status.handle(), "progress", percent);
        status.saveAndClose();
    }
    QThread::msleep(unsigned(seconds * 1000));
    return 0;
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
    bool m_isStandIn = false; ///< the installer, which installs nothing
    bool m_isServed = false;
    QString m_package; ///< of the marked ones, in the Downloads

    static DictionariesListModel& model() { return *DictionariesListModel::instance(); }
    static DictPMController& controller() { return *DictPMController::instance(); }

    // Steps.
    static void start() { controller().downloadPackageProcess(); }
    static void again() { controller().reDownloadPackageProcess(); }
    static void cancel() { controller().cancelDownloading(); }
    static void until(int state) { QTRY_COMPARE_WITH_TIMEOUT(controller().syncState(), state, 60'000); }
    /// The worker is done, and nobody has heard of it.
    static void block() { QThreadPool::globalInstance()->waitForDone(); }
    /// All threads are there again, sooner than a worker that goes on sleeping gives up its own.
    static void free() { QVERIFY(QThreadPool::globalInstance()->waitForDone(1900)); }
    static void actAs(const char* acts) { qputenv("TESSALY_INSTALLER_ACTS", acts); }
    static void startOlderInstaller() {
        const char* const arguments[] = {"-package_name", "/old"};
        QVERIFY(OpenTask(installer, 2, arguments, 1) > 0);
    }
    static void killInstaller() {
        const int task = FindTaskByAppName(installer);
        QVERIFY(task > 0 && ::kill(task, SIGKILL) == 0); // -1 would be every process there is
    }
    void set(const char* key, const QJsonValue& value) {
        m_device.server().setSwitches({{QString::fromLatin1(key), value}});
    }
    void reset() { m_device.server().resetSwitches(); }
    void stopServer() { m_device.server().stop(), m_isServed = false; }
    int reports() { return int(m_device.server().status()[u"reported"].toArray().size()); }
    QStringList filesIn(const char* folder) const { return folderContent(m_device.path(folder)).keys(); }
    // What the worker has told until then is heard, too.
    void startAndSleep() {
        vellum::clock::setSpeed(1), set("package_state", u"wait"_qs), start();
        bool isAsleep = false;
        QTRY_VERIFY_WITH_TIMEOUT(isAsleep = isAsleep || !vellum::testing::takeSleeps().empty(), 60'000);
        QCoreApplication::processEvents();
    }
    void startAndLoad() {
        set("bytes_per_second", 500), start();
        QTRY_VERIFY_WITH_TIMEOUT(!filesIn(downloads).isEmpty(), 60'000);
        QCoreApplication::processEvents();
    }
    /// The controller installs what it has loaded.
    void install(const char* acts) {
        standIn(acts), start(), until(4);
        QCOMPARE(filesIn(downloads), QStringList(m_package));
    }
    void standIn(const char* acts) {
        actAs(acts);
        m_isStandIn = true;
        QFile::remove(m_device.path(installer));
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), m_device.path(installer)));
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
    void markTwo() {
        model().refreshData();
        model().toDownloadMode();
        QTRY_VERIFY_WITH_TIMEOUT(model().isDownloadMode(), 60'000);
        for (int row = 0; row < model().getCount(); ++row) {
            if (model().getLanguageFrom(row, true) == u"cs" || model().getLanguageFrom(row, true) == u"sr")
                model().toggleSelected(row);
        }
        QCOMPARE(model().selectedCount(), 2);
        m_package = u"dicts_"_qs + model().getSelectedIds().replace(u',', u'_') + u".tsi"_qs;
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(QFile::copy(m_device.path(installer), m_device.path("/var/installer")));
        connect(&controller(), &DictPMController::progressChanged, this,
                [this](int value) { m_progress << value; });
    }
    void init() {
        m_device.startServer();
        reset();
        m_device.setOnline(true);
        vellum::state::setSecureFreeBytes(-1);
        for (const char* folder : {downloads, "/mnt/secure/tspk", tests::dictionaryFolder}) {
            QDir(m_device.path(folder)).removeRecursively();
            QDir().mkpath(m_device.path(folder));
        }
        for (const char* name : {"/mnt/secure/tspk/a ts dictionaries b", "/mnt/secure/tspk/other"})
            writeFile(m_device.path(name), {});
        QFile::remove(m_device.path(statusFile));
        QFile::remove(m_device.path(installer));
        QVERIFY(QFile::copy(m_device.path("/var/installer"), m_device.path(installer)));
        m_isStandIn = false;
        m_isServed = true;
        vellum::clock::setSpeed(20);
        m_watch.emplace();
        for (const auto& text :
             {u"Error installing dictionaries"_qs, u"Can not download"_qs, u"Can not start"_qs})
            m_watch->allow(text);
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
        stopServer();
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
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<QString>("told");
        QTest::addColumn<int>("reports"); // that the server gets
        QTest::addColumn<int>("code");    // of a failed installation
        const auto row = [](const char* name, const QString& told, const Steps& steps, int left = 0) {
            QTest::newRow(name) << steps << told << int(told.count(u'8')) + left << 0;
        };
        const auto failing = [](const char* name, int code, const Steps& steps) {
            const auto told = u"1 2 3 4 7 error(%1) syncFinished(false) fatalError()"_qs;
            QTest::newRow(name) << steps << told.arg(code == -10 ? 7 : 6) << 0 << code;
        };
        row("retried before any request", installed, again);
        row("connected first, built for a while", installed,
            [this] { vellum::state::setNetState(0), set("package_build_ms", 1000), start(); });
        row("nothing marked", u"1 error(1) 5"_qs, [] { model().refreshData(), start(); });
        row("asked too often", u"1 error(2) 5"_qs, [this] { set("package_request", u"wait"_qs), start(); });
        row("no server", u"1 error(3) 5"_qs, [this] { stopServer(), start(); });
        row("no URL", u"1 2 error(5) 5"_qs, [this] { set("package_state", u"malformed"_qs), start(); });
        row("no network", {}, [this] { m_device.setOnline(false), start(), again(); });
        row("waits in vain, retried", u"1 2 error(2) 5 2 error(0) 3"_qs + installed.mid(5), [this] {
            set("package_state", u"wait"_qs), start(), until(5);
            QCOMPARE(vellum::testing::takeSleeps(),
                     std::vector<int>({2000, 2000, 2000, 2000, 2000, 5000, 5000, 5000, 5000, 5000}));
            QTRY_COMPARE_WITH_TIMEOUT(controller().progress(), 0, 60'000);
            reset(), again(), until(8); // for the package that was asked for before
            QVERIFY(!m_device.server().status()[u"requests"].toObject().contains(u"package_request"));
        });
        // No worker leaves an error behind and succeeds; an interface could set one.
        for (const int error : {1, 2, 3, 4, 5}) {
            const auto told = error % 2 == 0 ? u"simpleError()"_qs : u"syncFinished(false) fatalError()"_qs;
            row(qPrintable(u"error %1 by hand"_qs.arg(error)),
                u"1 error(%1) 2 3 %2 5 6"_qs.arg(error).arg(told),
                [error] { start(), block(), controller().setErrorType(error), until(5), cancel(); });
        }

        failing("broken off", -3, [this] { startAndLoad(), stopServer(); });
        failing("no space", -10, [] { vellum::state::setSecureFreeBytes(1000), start(); });
        failing("no installer", -1, [this] { QFile::remove(m_device.path(installer)), start(); });
        failing("an old result", -1, [this] {
            writeFile(m_device.path(statusFile), "out_code=0\nprogress=100\n");
            standIn("0.3"), start();
        });
        failing("installer killed", -1, [this] { install("60 -1 40"), killInstaller(); });
        row("not reported", installed, [this] { install("0.5 0"), stopServer(), until(8); });
        row("installer done, but at work", installed, [this] { standIn("300 0 100"), start(); });
        failing("after an older installer", -7,
                [this] { standIn("0 0 100 0.6"), startOlderInstaller(), actAs("1 -7"), start(); });
        failing("too long after an older installer", -1,
                [this] { standIn("60"), startOlderInstaller(), start(), until(7), killInstaller(); });

        row("cancelled when asking", u"1 6"_qs,
            [this] { set("delay_ms", 30'000), start(), QTest::qWait(50), cancel(), free(); });
        row("cancelled when waiting", u"1 2 6"_qs, [this] { startAndSleep(), cancel(), free(); });
        row("cancelled when loading", u"1 2 3 6"_qs,
            [this] { startAndLoad(), QTest::qWait(50), cancel(), free(); });
        row("cancelled when loaded", u"1 6 2 3"_qs, [] { start(), block(), cancel(); }); // 2, 3 come late
        row("cancelled when installing", u"1 2 3 4 6 8 syncFinished(true)"_qs,
            [this] { install("0.3 0"), cancel(), until(8); });
        row("anew when loading", u"1 2 3 "_qs + installed, [this] { startAndLoad(), reset(), start(); });
        row("anew while the old one sleeps", u"1 2 6 "_qs + installed,
            [this] { startAndSleep(), cancel(), reset(), start(), until(8), QTest::qWait(100); });
        // What a run left to its installer is reported, too.
        row(
            "anew while installing, cancelled", u"1 2 3 4 1 2 6"_qs,
            [this] {
                install("0.6 0"), m_progress.clear(), startAndSleep();
                QTRY_COMPARE_WITH_TIMEOUT(reports(), 1, 20'000);
                QVERIFY(!m_progress.contains(90)); // of the old one
                cancel();
            },
            1);
        row(
            "anew while installing", u"1 2 3 4 "_qs + installed,
            [this] {
                install("3 0"); // and has seen its package before the next run replaces that
                QTRY_VERIFY_WITH_TIMEOUT(readFile(m_device.path(statusFile)).contains("out_code=0"), 20'000);
                actAs("0 0"), start(), until(8);
            },
            1);
    }
    void ends() {
        QFETCH(const Steps, steps);
        QFETCH(const QString, told);
        QFETCH(const int, code);
        steps();
        if (!told.isEmpty())
            QTRY_VERIFY_WITH_TIMEOUT(controller().syncState() >= 5, 60'000);
        QThreadPool::globalInstance()->waitForDone();
        QTRY_VERIFY_WITH_TIMEOUT(FindTaskByAppName(installer) == -1, 10'000);
        QCoreApplication::processEvents();
        if (told.endsWith(u'5') || told.endsWith(u'6'))
            QTRY_COMPARE_WITH_TIMEOUT(controller().progress(), 0, 60'000);
        QCOMPARE(story(), told);
        QCOMPARE(m_watch->lines(u"Error installing"_qs),
                 code == 0 ? QStringList()
                           : QStringList(u"Error installing dictionaries (code: %1)."_qs.arg(code)));
        QCOMPARE(filesIn(downloads), QStringList());
        const bool isInstalled = told.endsWith(u"8 syncFinished(true)");
        QCOMPARE(filesIn(tests::dictionaryFolder).size(), isInstalled && !m_isStandIn ? 2 : 0);
        if (isInstalled) {
            QCOMPARE(filesIn("/mnt/secure/tspk"), QStringList(u"other"_qs));
            QCOMPARE(QString::fromUtf8(readFile(m_device.path(statusFile))).simplified(),
                     u"out_code=-1 progress=0"_qs);
        }
        if (m_isServed)
            QTEST(reports(), "reports");
        QCOMPARE(controller().isInstalling(), 90 <= controller().progress() && controller().progress() <= 95);
        controller().handleDownloadFinished(); // by hand, after its end: does no harm
        QCOMPARE(story(), QString());
    }

    void showsProgress() {
        standIn("0.1 -7"), start(), until(7);
        QVERIFY(controller().progress() >= 90 && controller().isInstalling());
        actAs("0.5 0 60"), vellum::clock::setSpeed(1), set("bytes_per_second", 15'000);
        m_signals->take();
        m_progress.clear();
        const TickRecorder ticks;
        start();
        QVERIFY(controller().progress() == 0 && !controller().isInstalling());
        controller().handleDownloadProgress();
        QCOMPARE(controller().progress(), 10);
        until(4);
        QVERIFY(controller().isInstalling());
        until(8);
        QCOMPARE(QSet(ticks.repeated.begin(), ticks.repeated.end()), QSet<int>({1000}));
        QVERIFY(ticks.single.first() == 200 && ticks.single.count(1000) == ticks.single.size() - 1);
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

int main(int count, char** arguments) {
    if (std::string(arguments[0]).ends_with(installer))
        return standInForInstaller(arguments[2]);
    const QCoreApplication application(count, arguments);
    PackageDownloadTest test;
    return QTest::qExec(&test, count, arguments);
}

#include "package_download_test.moc"
