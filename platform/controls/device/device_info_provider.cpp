#include "device_info_provider.h"

#include <QGuiApplication>
#include <QJSEngine>
#include <QScreen>
#include <QStringList>
#include <base/device_root.h>
#include <cmath>
#include <vellum/device_state.h>

namespace tessaly::controls {

namespace {

constexpr double screenInches = 6; // the diagonal of every screen of this family
constexpr int redrawMs = 250;      // of the whole display
constexpr QSize defaultScreen(758, 1024);

QSize parseScreen(const QString& text) {
    const QStringList sides = text.split(QLatin1Char('x'));
    const QSize size = sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : QSize();
    return size.isEmpty() ? defaultScreen : size;
}

} // namespace

DeviceInfoProvider* DeviceInfoProvider::instance() {
    static auto* const provider = new DeviceInfoProvider; // outlives every engine
    return provider;
}

DeviceInfoProvider* DeviceInfoProvider::create(QQmlEngine*, QJSEngine*) {
    QJSEngine::setObjectOwnership(instance(), QJSEngine::CppOwnership);
    return instance();
}

DeviceInfoProvider::DeviceInfoProvider()
    : m_state(readState()) {
    // A change replaces the file, and a watch on the old one would see no other: so its directory is watched.
    m_watcher.addPath(QString::fromStdString(base::hostPath("/var")));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &DeviceInfoProvider::follow);
    m_redraw.setSingleShot(true);
    m_redraw.setInterval(redrawMs);
}

DeviceInfoProvider::State DeviceInfoProvider::readState() {
    namespace state = vellum::state;
    return {.touch = state::input() == state::Input::Touch,
            .debugMode = state::isDebugMode(),
            .language = QString::fromStdString(state::language()),
            .screen = parseScreen(QString::fromStdString(state::screen()))};
}

void DeviceInfoProvider::follow() {
    const State state = readState();
    if (state == m_state)
        return;
    m_state = state;
    Q_EMIT changed();
}

double DeviceInfoProvider::dpi() const {
    return std::hypot(m_state.screen.width(), m_state.screen.height()) / screenInches;
}

void DeviceInfoProvider::enterA2onFlickForItem(QQuickItem* flickable) {
    if (flickable == nullptr || flickable == m_flicked)
        return;
    leaveA2();
    m_flicked = flickable;
    m_rest = connect(flickable, SIGNAL(movementEnded()), this, SLOT(comeToRest()));
    Q_EMIT inA2Changed();
}

void DeviceInfoProvider::comeToRest() {
    exitA2(true, {});
}

void DeviceInfoProvider::leaveA2() {
    disconnect(m_rest);
    if (!m_flicked)
        return;
    m_flicked.clear();
    Q_EMIT inA2Changed();
}

void DeviceInfoProvider::exitA2(bool redraw, const QJSValue& callback) {
    if (redraw && isInA2())
        m_redraw.start();
    leaveA2();
    const auto call = [callback] {
        if (!callback.isCallable())
            return;
        const QJSValue result = callback.call();
        if (result.isError())
            qWarning("exitA2: %s", qPrintable(result.toString()));
    };
    if (redraw && m_redraw.isActive())
        connect(&m_redraw, &QTimer::timeout, this, call, Qt::SingleShotConnection);
    else
        call();
}

double DeviceInfoProvider::pointSize(double pixels) {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return pixels * 72 / (screen != nullptr ? screen->logicalDotsPerInch() : 96);
}

} // namespace tessaly::controls
