#pragma once

#include <QFileSystemWatcher>
#include <QJSValue>
#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace tessaly::controls {

/// What the screen, the input and the settings of this device are, for QML to follow. One object for the
/// process, which sees every change of the device's state, whichever process makes it. GUI thread.
class DeviceInfoProvider : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Whether the screen takes touches; if not, there are keys only.
    Q_PROPERTY(bool touch READ touch NOTIFY changed)
    /// Two-letter code of the interface's language.
    Q_PROPERTY(QString language READ language NOTIFY changed)
    Q_PROPERTY(bool debugMode READ isDebugMode NOTIFY changed)
    Q_PROPERTY(int screenWidth READ screenWidth NOTIFY changed)   ///< pixels
    Q_PROPERTY(int screenHeight READ screenHeight NOTIFY changed) ///< pixels
    Q_PROPERTY(double dpi READ dpi NOTIFY changed)                ///< dots per inch of the screen
    /// Whether the display is in its fast mode, which shows black and white only and leaves ghosts.
    Q_PROPERTY(bool inA2 READ isInA2 NOTIFY inA2Changed)

public:
    static DeviceInfoProvider* instance();
    static DeviceInfoProvider* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    [[nodiscard]] bool touch() const { return m_state.touch; }
    [[nodiscard]] QString language() const { return m_state.language; }
    [[nodiscard]] bool isDebugMode() const { return m_state.debugMode; }
    [[nodiscard]] int screenWidth() const { return m_state.screen.width(); }
    [[nodiscard]] int screenHeight() const { return m_state.screen.height(); }
    [[nodiscard]] double dpi() const;
    [[nodiscard]] bool isInA2() const { return m_flicked; }

    /// Fast mode until the flickable comes to rest; then the display draws the screen anew.
    Q_INVOKABLE void enterA2onFlickForItem(QQuickItem* flickable);
    /// Leaves the fast mode and calls `callback` once. `redraw` asks for the screen to be drawn anew and
    /// waits for that, or for the drawing that is under way since a flickable came to rest; without it the
    /// ghosts stay.
    Q_INVOKABLE void exitA2(bool redraw, const QJSValue& callback);

    /// The point size that gives letters of this many pixels.
    Q_INVOKABLE static double pointSize(double pixels);

Q_SIGNALS:
    void changed();
    void inA2Changed();

private Q_SLOTS:
    void comeToRest();

private:
    struct State {
        bool touch = true;
        bool debugMode = false;
        QString language;
        QSize screen;
        bool operator==(const State&) const = default;
    };

    DeviceInfoProvider();
    static State readState();
    void follow();
    void leaveA2();

    State m_state;
    QFileSystemWatcher m_watcher;
    QPointer<QQuickItem> m_flicked;
    QMetaObject::Connection m_rest;
    QTimer m_redraw; // runs while the display draws
};

} // namespace tessaly::controls
