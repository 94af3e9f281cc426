#include "device_keys.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace tessaly::simulator {

void DeviceKeys::setWindow(QObject* window) {
    if (window == m_window)
        return;
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = window;
    if (m_window)
        m_window->installEventFilter(this);
    Q_EMIT windowChanged();
}

void DeviceKeys::press(int key, bool repeated) {
    send(QEvent::KeyPress, key, repeated);
}

void DeviceKeys::release(int key) {
    send(QEvent::KeyRelease, key, false);
}

void DeviceKeys::send(QEvent::Type type, int key, bool repeated) {
    if (!m_window)
        return;
    QKeyEvent event(type, key, Qt::NoModifier, {}, repeated);
    QCoreApplication::sendEvent(m_window, &event);
}

bool DeviceKeys::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Escape)
        return false;
    send(event->type(), Qt::Key_Back, key->isAutoRepeat());
    return true;
}

} // namespace tessaly::simulator
