#include <platform/vellum/testing.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>
#include <vellum/clock.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <csignal>
#include <future>
#include <optional>

using namespace tessaly;

namespace {

constexpr auto agentPath = "/ebrmain/bin/netagent";
const char* const connectSilent[] = {"connect_silent", nullptr};

} // namespace

/// Tasks, the connection that one of them makes, waits and timers.
class VellumTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_device.emplace();
        vellum::state::setConnectDelayMs(0);
    }

    void cleanup() { QCOMPARE(m_log.takeUnexpected(), QStringList()); }

    void aTaskIsFoundWhileItLives() {
        vellum::state::setConnectDelayMs(60'000);
        QCOMPARE(FindTaskByAppName(agentPath), -1);
        const int task = OpenTask(agentPath, 2, connectSilent, 1);
        QVERIFY(task > 0);
        QCOMPARE(FindTaskByAppName(agentPath), task);
        QCOMPARE(FindTaskByAppName("/ebrmain/bin/dictpackageinstaller.app"), -1);
        QCOMPARE(CloseTask(task, 0, 1), 0);
        QTRY_COMPARE(FindTaskByAppName(agentPath), -1);
        QTRY_COMPARE(::kill(task, 0), -1); // reaped
        QCOMPARE(CloseTask(task, 0, 1), -1);
    }

    void closesTasksOfTheDeviceOnly() {
        QProcess stranger;
        stranger.start(u"sleep"_qs, {u"60"_qs});
        QVERIFY(stranger.waitForStarted());
        QCOMPARE(CloseTask(int(stranger.processId()), 0, 1), -1);
        QVERIFY(!stranger.waitForFinished(100));
        stranger.kill();
        QVERIFY(stranger.waitForFinished());
    }

    void aNullEntryEndsTheArguments() {
        const QString script = m_device->path("/ebrmain/bin/script");
        writeFile(script, "#!/bin/sh\necho \"$#:$1:$2\" > \"$1.part\" && mv \"$1.part\" \"$1\"\n");
        QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
        const QByteArray output = m_device->path("/var/output").toUtf8();
        const char* const arguments[] = {output.constData(), "second one", nullptr, "not there"};
        QVERIFY(OpenTask("/ebrmain/bin/script", 4, arguments, 0) > 0);
        QTRY_COMPARE(readFile(QString::fromUtf8(output)), "2:" + output + ":second one\n");
    }

    void reportsAProgramThatDoesNotStart() {
        QCOMPARE(OpenTask("/ebrmain/bin/nothing", 0, nullptr, 0), -1);
        QVERIFY(m_log.takeUnexpected().value(0).endsWith(QStringLiteral("No such file or directory")));
    }

    void connectsThroughTheAgent() {
        vellum::state::setConnectDelayMs(300);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(NetConnect2(nullptr, 1), 0);
        QVERIFY(timer.elapsed() >= 300);
        QCOMPARE(GetNetState(), 2);
        QFile::remove(m_device->path(agentPath)); // connected already: not asked
        QCOMPARE(NetConnect2(nullptr, 1), 0);
        vellum::state::setNetworkReachable(false);
        QCOMPARE(GetNetState(), 0);
        QCOMPARE(NetConnect2(nullptr, 1), -1);
        vellum::state::setNetworkReachable(true);
        QCOMPARE(NetConnect2(nullptr, 1), -1);
        QVERIFY(m_log.takeUnexpected().value(0).startsWith(QStringLiteral("Can not start")));
    }

    void theAgentFailsWhenTheNetworkGoesMeanwhile() {
        using vellum::state::NetworkNotice;
        vellum::state::setConnectDelayMs(1000);
        QVERIFY(OpenTask(agentPath, 1, connectSilent, 0) > 0);
        QTRY_COMPARE(vellum::state::networkNotice(), NetworkNotice::Connecting);
        vellum::state::setNetworkReachable(false);
        QTRY_COMPARE(vellum::state::networkNotice(), NetworkNotice::NoNetwork);
        QCOMPARE(GetNetState(), 0);
    }

    void quittingEndsTheWaitForTheAgent() {
        vellum::state::setConnectDelayMs(60'000);
        auto connecting = std::async(std::launch::async, [] { return NetConnect2(nullptr, 1); });
        QTRY_VERIFY(FindTaskByAppName(agentPath) > 0);
        vellum::clock::beginQuit();
        QCOMPARE(connecting.wait_for(std::chrono::seconds(5)), std::future_status::ready);
        QCOMPARE(connecting.get(), -1);
        const int agent = FindTaskByAppName(agentPath); // goes on by itself
        QCOMPARE(CloseTask(agent, 0, 1), 0);
        QTRY_COMPARE(FindTaskByAppName(agentPath), -1);
        QCOMPARE(NetConnect2(nullptr, 1), -1);
        vellum::testing::resume();
        vellum::state::setConnectDelayMs(0);
        QCOMPARE(NetConnect2(nullptr, 1), 0);
    }

    void armingANameAgainReplacesItsTimer() {
        static QByteArray fired; // in their order
        fired.clear();
        const auto arm = [](const char* name, const char* mark, int milliseconds) {
            const auto fire = [](void* text) {
                fired += QThread::currentThread() == qApp->thread() ? static_cast<char*>(text) : "?";
            };
            SetHardTimerEx(name, fire, const_cast<char*>(mark), milliseconds);
        };
        arm("name", "1", 20);
        arm("other", "2", 40);
        arm("name", "3", 60);
        std::async(std::launch::async, [&] { arm("worker", "4", 80); }).get();
        QTRY_COMPARE(fired, "234");
    }

    void quittingWakesSleepers() {
        auto sleeper = std::async(std::launch::async, [] {
            vl_sleep(60'000);
            vl_sleep(60'000);
        });
        QCOMPARE(sleeper.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        vellum::clock::beginQuit();
        QCOMPARE(sleeper.wait_for(std::chrono::seconds(5)), std::future_status::ready);
        vellum::testing::resume();
        QElapsedTimer timer;
        timer.start();
        vl_sleep(40);
        QVERIFY(timer.elapsed() >= 40);
    }

private:
    std::optional<fixture::TestDevice> m_device;
    LogWatch m_log;
};

QTEST_GUILESS_MAIN(VellumTest)
#include "vellum_test.moc"
