#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>

namespace tessaly::services {

/// The way of morphology data from one address on the server to the device: a worker goes it, the interface
/// watches. GUI thread.
class MorphologyTransfer : public QObject {
    Q_OBJECT

public:
    /// The one of this address. Lives as long as the application object: then transfers are aborted, and
    /// those that are too far for that awaited. The first call of all has cleared away what killed processes
    /// left on the device.
    static MorphologyTransfer& at(const QString& url);
    MorphologyTransfer(const QString& url, QObject* parent);

    /// Unless it runs already. False, with the reason in the log, where it can't: the address is none of
    /// morphology data, or the device has no room.
    bool start(const QString& apiKey);
    /// Ends the transfer at once, with nothing changed on the device, if canAbort().
    void abort();

    [[nodiscard]] bool isRunning() const;
    /// False once its files begin to move to their places, and when nothing runs.
    [[nodiscard]] bool canAbort() const;
    /// 0.0 to 1.0; never falls. 0.0 while nothing runs.
    [[nodiscard]] double progress() const;

Q_SIGNALS:
    void runningChanged();
    /// Progress, or canAbort().
    void changed();
    /// Once for each start, after isRunning() has become false.
    void ended(bool success);

private:
    struct Run;

    bool bring(Run& run);
    void end(bool success);

    const QString m_url;
    std::shared_ptr<Run> m_run; ///< while it runs; that of an aborted one lives on in its worker
    QTimer m_look;
};

} // namespace tessaly::services
