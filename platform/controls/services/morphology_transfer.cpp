#include "morphology_transfer.h"

#include <QThreadPool>
#include <chrono>

namespace tessaly::services {

using namespace std::chrono_literals;

MorphologyTransfer::MorphologyTransfer(const QString& url, const std::string& language, const QString& apiKey,
                                       QObject* parent)
    : QObject(parent)
    , m_url(url)
    , m_job(url.toStdString(), language, apiKey.toStdString()) {
    connect(&m_look, &QTimer::timeout, this, &MorphologyTransfer::lookAtProgress);
}

void MorphologyTransfer::start(QThreadPool& pool) {
    m_look.start(200ms); // as often as an e-paper screen can follow
    pool.start([this] {
        const std::string error = m_job.run([this] {
            QMetaObject::invokeMethod(this, &MorphologyTransfer::canAbortChanged, Qt::QueuedConnection);
        });
        const auto leave = [this, error] {
            end(QString::fromStdString(error));
            Q_EMIT workerLeft();
        };
        QMetaObject::invokeMethod(this, leave, Qt::QueuedConnection);
    });
}

void MorphologyTransfer::abort() {
    if (m_isRunning && m_job.cancel())
        end(QStringLiteral("stopped"));
}

void MorphologyTransfer::lookAtProgress() {
    const double progress = m_job.progress();
    if (progress == m_progress)
        return;
    m_progress = progress;
    Q_EMIT progressChanged();
}

void MorphologyTransfer::end(const QString& errorText) {
    if (!m_isRunning)
        return;
    m_isRunning = false;
    m_look.stop();
    Q_EMIT ended(errorText.isEmpty(), errorText);
}

} // namespace tessaly::services
