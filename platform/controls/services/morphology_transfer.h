#pragma once

#include "morphology_job.h"

#include <QObject>
#include <QString>
#include <QTimer>

class QThreadPool;

namespace tessaly::services {

/// A running transfer as the interface sees it. Outlives its job on the worker, which only ever reaches it by
/// queued calls. GUI thread.
class MorphologyTransfer : public QObject {
    Q_OBJECT

public:
    MorphologyTransfer(const QString& url, const std::string& language, const QString& apiKey,
                       QObject* parent);

    /// Once. The pool ends before this object does.
    void start(QThreadPool& pool);
    /// Ends the transfer at once, unless it is too late.
    void abort();

    [[nodiscard]] QString url() const { return m_url; }
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    [[nodiscard]] bool canAbort() const { return m_isRunning && m_job.canCancel(); }
    [[nodiscard]] double progress() const { return m_progress; }

Q_SIGNALS:
    void progressChanged();
    void canAbortChanged();
    /// Once, after isRunning() has become false.
    void ended(bool success, const QString& errorText);
    /// The worker is done with this object: the last signal, after ended().
    void workerLeft();

private:
    void lookAtProgress();
    void end(const QString& errorText);

    const QString m_url;
    MorphologyJob m_job;
    QTimer m_look;
    double m_progress = 0;
    bool m_isRunning = true;
};

} // namespace tessaly::services
