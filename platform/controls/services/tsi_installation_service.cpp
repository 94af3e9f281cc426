#include <services/tsi_installation_service.h>

#include "morphology_transfer.h"

namespace tessaly::services {

TsiInstallationService::TsiInstallationService(QObject* parent)
    : QObject(parent) {
    watch(MorphologyTransfer::at({}));
}

void TsiInstallationService::setSummary(TsiInstallationSummary* summary) {
    if (m_summary == summary)
        return;
    m_summary = summary;
    if (m_summary && m_transfer)
        m_summary->add(m_transfer);
    Q_EMIT summaryChanged();
}

void TsiInstallationService::setUrl(const QString& url) {
    if (m_url == url)
        return;
    m_url = url;
    watch(MorphologyTransfer::at(url));
    Q_EMIT urlChanged();
}

void TsiInstallationService::watch(MorphologyTransfer& transfer) {
    if (m_transfer)
        m_transfer->disconnect(this);
    m_transfer = &transfer;
    if (m_summary)
        m_summary->add(m_transfer);
    connect(m_transfer, &MorphologyTransfer::runningChanged, this, &TsiInstallationService::runningChanged);
    connect(m_transfer, &MorphologyTransfer::changed, this, &TsiInstallationService::progressChanged);
    connect(m_transfer, &MorphologyTransfer::changed, this, &TsiInstallationService::canAbortChanged);
    connect(m_transfer, &MorphologyTransfer::ended, this, &TsiInstallationService::finished);
    Q_EMIT runningChanged();
    Q_EMIT progressChanged();
    Q_EMIT canAbortChanged();
}

bool TsiInstallationService::isRunning() const {
    return m_transfer && m_transfer->isRunning();
}

double TsiInstallationService::progress() const {
    return m_transfer ? m_transfer->progress() : 0;
}

bool TsiInstallationService::canAbort() const {
    return m_transfer && m_transfer->canAbort();
}

void TsiInstallationService::install(const QString& url) {
    setUrl(url);
    QString key;
    if (m_apiKeyProvider)
        QMetaObject::invokeMethod(m_apiKeyProvider, "apiKey", Q_RETURN_ARG(QString, key));
    if (!m_transfer->start(key))
        Q_EMIT finished(false);
}

void TsiInstallationService::abort() {
    if (m_transfer)
        m_transfer->abort();
}

} // namespace tessaly::services
