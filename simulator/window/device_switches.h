#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace tessaly::fixture {
class TestDevice;
}

namespace tessaly::simulator {

/// What surrounds the device, and what can happen to it, for the window's switches. Changes that other
/// processes of the device make are seen. GUI thread.
class DeviceSwitches : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program makes it")
    /// `networkReachable`, `connected`, `connectDelayMs`, `storageFull` (the secure storage has hardly any
    /// space left), `debugMode`, `language` (two-letter code), `profile` (its name; empty when it is none of
    /// them) and `touch`. All but `connected` and `touch` can be set.
    Q_PROPERTY(QVariantMap state READ state NOTIFY stateChanged)
    Q_PROPERTY(QVariantList languages READ languages CONSTANT) ///< objects with `name` and `label`
    Q_PROPERTY(QVariantList profiles READ profiles CONSTANT)   ///< objects with `name` and `label`
    Q_PROPERTY(bool serverUp READ isServerUp WRITE setServerUp NOTIFY serverChanged)
    Q_PROPERTY(bool serverSlow READ isServerSlow WRITE setServerSlow NOTIFY serverChanged)
    /// What came of the last thing asked for; empty when there is nothing to say.
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)

public:
    /// `cutPower` ends everything on the device at once. The device outlives this object.
    DeviceSwitches(fixture::TestDevice& device, std::function<void()> cutPower);

    [[nodiscard]] static QVariantMap state();
    Q_INVOKABLE void set(const QString& name, const QVariant& value);
    [[nodiscard]] static QVariantList languages();
    [[nodiscard]] static QVariantList profiles();
    [[nodiscard]] bool isServerUp() const { return m_isServerUp; }
    void setServerUp(bool up);
    /// For the starts from now on.
    void setServerOptions(const QStringList& options) { m_serverOptions = options; }
    [[nodiscard]] bool isServerSlow() const { return m_isServerSlow; }
    void setServerSlow(bool slow);
    [[nodiscard]] QString note() const { return m_note; }

    /// The one that runs or, since that takes but a moment, the next.
    Q_INVOKABLE void killInstaller();
    /// The server is none of the device's: it will be as it is now.
    Q_INVOKABLE void losePower();
    /// Has the server run, or be what it was when the power was lost.
    void restoreServer();

Q_SIGNALS:
    void stateChanged();
    void serverChanged();
    void noteChanged();

private:
    void setNote(const QString& note);
    /// What it couldn't do is in the note.
    void tryWithServer(const std::function<void()>& change);
    void configureServer();
    void killIfThere();

    fixture::TestDevice& m_device;
    std::function<void()> m_cutPower;
    QFileSystemWatcher m_watcher;
    QTimer m_hunt; ///< for the next installer
    QStringList m_serverOptions;
    bool m_isServerUp = false;
    bool m_isServerSlow = false;
    QString m_note;
};

} // namespace tessaly::simulator
