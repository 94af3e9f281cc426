#include "device_switches.h"

#include "options.h"
#include "profiles.h"
#include "simulator/fixture/test_device.h"

#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <csignal>

namespace tessaly::simulator {

namespace {

namespace state = vellum::state;

constexpr std::int64_t hardlyAnySpace = 16 << 10; ///< bytes; less than any package
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
}

bool DeviceSwitches::isNetworkReachable() {
    return state::isNetworkReachable();
}
void DeviceSwitches::setNetworkReachable(bool reachable) {
    state::setNetworkReachable(reachable);
    Q_EMIT stateChanged();
}

bool DeviceSwitches::isConnected() {
    return state::netState() == 2;
}

int DeviceSwitches::connectDelayMs() {
    return state::connectDelayMs();
}
void DeviceSwitches::setConnectDelayMs(int milliseconds) {
    state::setConnectDelayMs(milliseconds);
    Q_EMIT stateChanged();
}

bool DeviceSwitches::isStorageFull() {
    return state::secureFreeBytes() >= 0;
}
void DeviceSwitches::setStorageFull(bool full) {
    state::setSecureFreeBytes(full ? hardlyAnySpace : -1);
    Q_EMIT stateChanged();
}

bool DeviceSwitches::isDebugMode() {
    return state::isDebugMode();
}
void DeviceSwitches::setDebugMode(bool on) {
    state::setDebugMode(on);
    Q_EMIT stateChanged();
}

QString DeviceSwitches::language() {
    return QString::fromStdString(state::language());
}
void DeviceSwitches::setLanguage(const QString& code) {
    state::setLanguage(code.toStdString());
    Q_EMIT stateChanged();
}
QVariantList DeviceSwitches::languages() {
    QVariantList list;
    for (const QString& code : interfaceLanguages())
        list << choice(code, code);
    return list;
}

QString DeviceSwitches::profile() {
    return currentProfile();
}
void DeviceSwitches::setProfile(const QString& name) {
    if (const Profile* const profile = findProfile(name))
        applyProfile(*profile);
    Q_EMIT stateChanged();
}
QVariantList DeviceSwitches::profiles() {
    QVariantList list;
    for (const QString& name : profileNames())
        list << choice(name, findProfile(name)->label);
    return list;
}

QSize DeviceSwitches::screen() {
    const Profile* const profile = findProfile(currentProfile());
    return profile ? profile->screen : findProfile(profileNames().constFirst())->screen;
}
bool DeviceSwitches::isTouch() {
    return state::input() == state::Input::Touch;
}

void DeviceSwitches::setServerUp(bool up) {
    if (up == m_isServerUp)
        return;
    try {
        if (up) {
            m_device.startServer(m_serverOptions);
            m_isServerUp = true;
            configureServer();
        } else {
            m_device.server().stop();
            m_isServerUp = false;
        }
        setNote({});
    } catch (const std::exception& error) {
        setNote(QStringLiteral("%1\nThe log: %2").arg(QString::fromUtf8(error.what()), m_device.logPath()));
    }
    Q_EMIT serverChanged();
}

void DeviceSwitches::setServerSlow(bool slow) {
    if (slow == m_isServerSlow)
        return;
    m_isServerSlow = slow;
    try {
        if (m_isServerUp)
            configureServer();
        setNote({});
    } catch (const std::exception& error) {
        setNote(QStringLiteral("%1\nThe log: %2").arg(QString::fromUtf8(error.what()), m_device.logPath()));
    }
    Q_EMIT serverChanged();
}

void DeviceSwitches::configureServer() {
    if (m_isServerSlow)
        m_device.server().setSwitches(slowness());
    else
        m_device.server().resetSwitches();
}

void DeviceSwitches::setNote(const QString& note) {
    if (note == m_note)
        return;
    m_note = note;
    Q_EMIT noteChanged();
}

void DeviceSwitches::killInstaller() {
    const int task = FindTaskByAppName(installer);
    const bool isKilled = task > 0 && ::kill(task, SIGKILL) == 0;
    setNote(isKilled ? QStringLiteral("The installer was killed.")
                     : QStringLiteral("No installer is running."));
}

void DeviceSwitches::losePower() {
    m_cutPower();
}

} // namespace tessaly::simulator
