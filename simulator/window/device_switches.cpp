#include "device_switches.h"

#include "options.h"
#include "simulator/fixture/test_device.h"

#include <utilities/cfg_wrapper.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QFile>
#include <csignal>

namespace tessaly::simulator {

namespace {

namespace state = vellum::state;

constexpr std::int64_t hardlyAnySpace = 16 << 10;       ///< bytes; less than any package
constexpr auto serverFile = "/var/server_switches.cfg"; ///< only while there is no power
constexpr auto upKey = "up";
constexpr auto slowKey = "slow";
constexpr auto installer = "/ebrmain/bin/dictpackageinstaller.app";

/// Slow enough to watch every stage, and for the device to lose its patience with some packages.
QJsonObject slowness() {
    return {{QStringLiteral("delay_ms"), 1500},
            {QStringLiteral("package_build_ms"), 20000},
            {QStringLiteral("bytes_per_second"), 50000}};
}

QVariantMap choice(const QString& name, const QString& label) {
    return {{QStringLiteral("name"), name}, {QStringLiteral("label"), label}};
}

} // namespace

DeviceSwitches::DeviceSwitches(fixture::TestDevice& device, std::function<void()> cutPower)
    : m_device(device)
    , m_cutPower(std::move(cutPower)) {
    // The file of the device's state is replaced when it changes, so its folder is what can be watched.
    m_watcher.addPath(m_device.path("/var"));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &DeviceSwitches::stateChanged);
    connect(&m_hunt, &QTimer::timeout, this, &DeviceSwitches::killIfThere);
    connect(&m_device.server(), &fixture::ServerProcess::ended, this, [this] {
        m_isServerUp = false;
        setNote(QStringLiteral("The dictionary server has ended by itself.\nThe log: ") + m_device.logPath());
        Q_EMIT serverChanged();
    });
}

QVariantMap DeviceSwitches::state() {
    return {{QStringLiteral("networkReachable"), state::isNetworkReachable()},
            {QStringLiteral("connected"), state::netState() == 2},
            {QStringLiteral("connectDelayMs"), state::connectDelayMs()},
            {QStringLiteral("storageFull"), state::secureFreeBytes() >= 0},
            {QStringLiteral("debugMode"), state::isDebugMode()},
            {QStringLiteral("language"), QString::fromStdString(state::language())},
            {QStringLiteral("profile"), currentProfile()},
            {QStringLiteral("touch"), state::input() == state::Input::Touch}};
}

void DeviceSwitches::set(const QString& name, const QVariant& value) {
    if (name == u"networkReachable")
        state::setNetworkReachable(value.toBool());
    else if (name == u"connectDelayMs")
        state::setConnectDelayMs(value.toInt());
    else if (name == u"storageFull")
        state::setSecureFreeBytes(value.toBool() ? hardlyAnySpace : -1);
    else if (name == u"debugMode")
        state::setDebugMode(value.toBool());
    else if (name == u"language")
        state::setLanguage(value.toString().toStdString());
    else if (name == u"profile")
        applyProfile(value.toString());
    Q_EMIT stateChanged();
}

QVariantList DeviceSwitches::languages() {
    QVariantList list;
    for (const QString& code : interfaceLanguages())
        list << choice(code, code);
    return list;
}

QVariantList DeviceSwitches::profiles() {
    QVariantList list;
    for (const Profile& profile : simulator::profiles())
        list << choice(profile.name, profile.label);
    return list;
}

void DeviceSwitches::setServerUp(bool up) {
    if (up == m_isServerUp)
        return;
    tryWithServer([this, up] {
        if (up)
            m_device.startServer(m_serverOptions);
        else
            m_device.server().stop();
        m_isServerUp = up;
        configureServer();
    });
}

void DeviceSwitches::setServerSlow(bool slow) {
    m_isServerSlow = slow;
    tryWithServer([this] { configureServer(); });
}

void DeviceSwitches::tryWithServer(const std::function<void()>& change) {
    try {
        change();
        setNote({});
    } catch (const std::exception& error) {
        setNote(QStringLiteral("%1\nThe log: %2").arg(QString::fromUtf8(error.what()), m_device.logPath()));
    }
    Q_EMIT serverChanged();
}

void DeviceSwitches::configureServer() {
    if (m_isServerUp && m_isServerSlow)
        m_device.server().setSwitches(slowness());
    else if (m_isServerUp)
        m_device.server().resetSwitches();
}

void DeviceSwitches::setNote(const QString& note) {
    if (note == m_note)
        return;
    m_note = note;
    Q_EMIT noteChanged();
}

void DeviceSwitches::killInstaller() {
    constexpr int lookEveryMs = 5;
    m_hunt.start(lookEveryMs);
    setNote(QStringLiteral("The next installer will be killed."));
}

void DeviceSwitches::killIfThere() {
    const int task = FindTaskByAppName(installer);
    if (task <= 0 || ::kill(task, SIGKILL) != 0)
        return;
    m_hunt.stop();
    setNote(QStringLiteral("The installer was killed."));
}

void DeviceSwitches::losePower() {
    utilities::CfgWrapper kept(serverFile, 1);
    WriteInt(kept.handle(), upKey, m_isServerUp ? 1 : 0);
    WriteInt(kept.handle(), slowKey, m_isServerSlow ? 1 : 0);
    kept.saveAndClose();
    m_cutPower();
}

void DeviceSwitches::restoreServer() {
    const utilities::CfgWrapper kept(serverFile, 0);
    m_isServerSlow = kept.readIfExists<int>(slowKey).value_or(0) != 0;
    setServerUp(kept.readIfExists<int>(upKey).value_or(1) != 0);
    QFile::remove(m_device.path(serverFile));
}

} // namespace tessaly::simulator
