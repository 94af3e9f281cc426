#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <atomic>
#include <base/staging.h>
#include <string>
#include <utilities/sync_downloader.h>

class QThreadPool;

namespace tessaly::services {

/// The way of one language's morphology data from the server to the device: a worker goes it, the interface
/// watches. GUI thread.
class MorphologyTransfer : public QObject {
    Q_OBJECT

public:
    /// Throws an exception if the device has no room for it.
    MorphologyTransfer(const QString& url, const std::string& language, const QString& apiKey,
                       QObject* parent);

    /// Once. The object deletes itself when the worker is done; the pool ends before it does.
    void start(QThreadPool& pool);
    /// Ends the transfer at once, with nothing changed on the device, if canAbort().
    void abort();

    [[nodiscard]] QString url() const { return m_url; }
    [[nodiscard]] bool isRunning() const { return m_phase != Phase::Over; }
    /// False once its files begin to move to their places.
    [[nodiscard]] bool canAbort() const { return m_phase == Phase::Fetching; }
    /// 0.0 to 1.0; never falls.
    [[nodiscard]] double progress() const;

Q_SIGNALS:
    /// Progress, or canAbort().
    void changed();
    /// Once, after isRunning() has become false.
    void ended(bool success);

private:
    enum class Phase { Fetching, Placing, Over };

    bool bring();
    void fetch();
    bool enter(Phase phase);

    const QString m_url;
    const std::string m_language;
    const base::Staging m_staging;
    utilities::SyncDownloader m_downloader;
    std::atomic<Phase> m_phase{Phase::Fetching};
    QTimer m_look;
};

} // namespace tessaly::services
