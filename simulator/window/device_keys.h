#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace tessaly::simulator {

/// The device's buttons: presses on the window's picture of them, and the PC's keyboard, reach the screen as
/// key events. Escape is the keyboard's Back. GUI thread.
class DeviceKeys : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QObject* window READ window WRITE setWindow NOTIFY windowChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QObject* window() const { return m_window; }
    void setWindow(QObject* window);

    /// `key` is a Qt::Key. `repeated`: it has been held.
    Q_INVOKABLE void press(int key, bool repeated = false);
    Q_INVOKABLE void release(int key);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void windowChanged();

private:
    void send(QEvent::Type type, int key, bool repeated);

    QPointer<QObject> m_window;
};

} // namespace tessaly::simulator
