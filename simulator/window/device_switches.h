#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QSize>
#include <QVariantList>
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
    Q_PROPERTY(bool networkReachable READ isNetworkReachable WRITE setNetworkReachable NOTIFY stateChanged)
    Q_PROPERTY(bool connected READ isConnected NOTIFY stateChanged)
    Q_PROPERTY(int connectDelayMs READ connectDelayMs WRITE setConnectDelayMs NOTIFY stateChanged)
    /// Whether the secure storage has hardly any space left.
    Q_PROPERTY(bool storageFull READ isStorageFull WRITE setStorageFull NOTIFY stateChanged)
    Q_PROPERTY(bool debugMode READ isDebugMode WRITE setDebugMode NOTIFY stateChanged)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY stateChanged) ///< two-letter code
    Q_PROPERTY(QVariantList languages READ languages CONSTANT) ///< objects with `name` and `label`
    Q_PROPERTY(QString profile READ profile WRITE setProfile NOTIFY stateChanged) ///< its name
    Q_PROPERTY(QVariantList profiles READ profiles CONSTANT) ///< objects with `name` and `label`
    Q_PROPERTY(QSize screen READ screen NOTIFY stateChanged) ///< pixels
    Q_PROPERTY(bool touch READ isTouch NOTIFY stateChanged)
    Q_PROPERTY(bool serverUp READ isServerUp WRITE setServerUp NOTIFY serverChanged)
    Q_PROPERTY(bool serverSlow READ isServerSlow WRITE setServerSlow NOTIFY serverChanged)
    /// What came of the last thing asked for; empty when there is nothing to say.
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)

public:
    /// `cutPower` ends everything on the device at once. The device outlives this object.
    DeviceSwitches(fixture::TestDevice& device, std::function<void()> cutPower);

    [[nodiscard]] static bool isNetworkReachable();
    void setNetworkReachable(bool reachable);
    [[nodiscard]] static bool isConnected();
    [[nodiscard]] static int connectDelayMs();
    void setConnectDelayMs(int milliseconds);
    [[nodiscard]] static bool isStorageFull();
    void setStorageFull(bool full);
    [[nodiscard]] static bool isDebugMode();
    void setDebugMode(bool on);
    [[nodiscard]] static QString language();
    void setLanguage(const QString& code);
    [[nodiscard]] static QVariantList languages();
    [[nodiscard]] static QString profile();
    void setProfile(const QString& name);
    [[nodiscard]] static QVariantList profiles();
    [[nodiscard]] static QSize screen();
    [[nodiscard]] static bool isTouch();
    [[nodiscard]] bool isServerUp() const { return m_isServerUp; }
    void setServerUp(bool up);
    /// For the starts from now on.
    void setServerOptions(const QStringList& options) { m_serverOptions = options; }
    [[nodiscard]] bool isServerSlow() const { return m_isServerSlow; }
    void setServerSlow(bool slow);
    [[nodiscard]] QString note() const { return m_note; }

    Q_INVOKABLE void killInstaller();
    Q_INVOKABLE void losePower();

Q_SIGNALS:
    void stateChanged();
    void serverChanged();
    void noteChanged();

private:
    void setNote(const QString& note);
    void configureServer();

    fixture::TestDevice& m_device;
    std::function<void()> m_cutPower;
    QFileSystemWatcher m_watcher;
    QStringList m_serverOptions;
    bool m_isServerUp = false;
    bool m_isServerSlow = false;
    QString m_note;
};

} // namespace tessaly::simulator
