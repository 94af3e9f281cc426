#include "../support/bare_device.h"

#include <tests/support/log_watch.h>
#include <vellum/vellum.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <cstring>

using namespace vellum;

namespace {

constexpr int changes = 100;

/// What the second process does: it changes one key all the time, and fails if it ever loses a change.
int changeScreen() {
    for (int i = 0; i < changes; ++i) {
        state::setScreen(std::to_string(i));
        if (state::screen() != std::to_string(i))
            return 1;
    }
    return 0;
}

} // namespace

class DeviceStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoProcessesLoseNoChange() {
        QProcess other;
        other.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--change-screen")});
        for (int i = 0; i < changes; ++i) {
            state::setConnectDelayMs(i);
            QCOMPARE(state::connectDelayMs(), i);
        }
        QVERIFY(other.waitForFinished());
        QCOMPARE(other.exitCode(), 0);
        QCOMPARE(state::screen(), std::to_string(changes - 1));
        QCOMPARE(state::connectDelayMs(), changes - 1);
    }

    void keepsEachValue() {
        QVERIFY(QFile::remove(m_device.path("/var/device_state.cfg")));
        QVERIFY(!state::isNetworkReachable() && !vl_debug_mode() && state::input() == state::Input::Touch);
        QVERIFY(state::netState() == 0 && state::secureFreeBytes() == -1 && state::language() == "en");

        state::setSecureFreeBytes(std::int64_t{1} << 40);
        state::setDebugMode(true);
        state::setInput(state::Input::Keys);
        state::setLanguage("de");
        state::setNetworkReachable(true);
        state::setNetState(2);
        QVERIFY(state::isNetworkReachable() && vl_debug_mode() && state::input() == state::Input::Keys);
        QVERIFY(GetNetState() == 2 && state::secureFreeBytes() == std::int64_t{1} << 40);
        QCOMPARE(state::language(), std::string("de"));
        state::setNetworkReachable(false);
        QCOMPARE(GetNetState(), 0);
    }

    void reportsAStateThatCanNotBeWritten() {
        const LogWatch log;
        qputenv("TESSALY_DEVICE_ROOT", "/nowhere");
        state::setLanguage("fr");
        qputenv("TESSALY_DEVICE_ROOT", m_device.path("").toUtf8());
        QVERIFY(log.unexpected().value(0).startsWith(u"Can not write the device state"));
    }

private:
    tessaly::tests::BareDevice m_device;
};

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--change-screen") == 0)
        return changeScreen();
    QCoreApplication application(argc, argv);
    DeviceStateTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "device_state_test.moc"
