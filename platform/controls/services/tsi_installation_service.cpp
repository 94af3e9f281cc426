#include <services/tsi_installation_service.h>

#include "morphology_address.h"
#include "morphology_transfer.h"
#include "morphology_transfers.h"

#include <QMetaMethod>
#include <base/log.h>
#include <ostream>

namespace tessaly::services {

namespace {

/// Objects made in QML return variants.
QString askForKey(QObject* provider) {
    if (!provider)
        return {};
    const QMetaObject* const type = provider->metaObject();
    const QMetaMethod method = type->method(type->indexOfMethod("apiKey()"));
    QString text;
    QVariant variant;
    if (method.returnMetaType() == QMetaType::fromType<QString>())
        method.invoke(provider, Qt::DirectConnection, Q_RETURN_ARG(QString, text));
    else if (method.returnMetaType() == QMetaType::fromType<QVariant>())
        method.invoke(provider, Qt::DirectConnection, Q_RETURN_ARG(QVariant, variant));
    return variant.isValid() ? variant.toString() : text;
}

} // namespace

TsiInstallationService::TsiInstallationService(QObject* parent)
    : QObject(parent) {
    connect(&MorphologyTransfers::instance(), &MorphologyTransfers::started, this,
            [this](MorphologyTransfer* transfer) {
                if (transfer->url() == m_url)
                    follow(transfer);
            });
}

void TsiInstallationService::setApiKeyProvider(QObject* provider) {
    if (m_apiKeyProvider == provider)
        return;
    m_apiKeyProvider = provider;
    Q_EMIT apiKeyProviderChanged();
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
    follow(MorphologyTransfers::instance().find(url));
    Q_EMIT urlChanged();
}

double TsiInstallationService::progress() const {
    return m_transfer ? m_transfer->progress() : 0;
}

bool TsiInstallationService::canAbort() const {
    return m_transfer && m_transfer->canAbort();
}

void TsiInstallationService::install(const QString& url) {
    const auto language = languageAt(url);
    if (!language) {
        log::cb::warn(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
            return out << "Not an address of morphology data: \"" << url.toStdString() << '"';
        });
        Q_EMIT finished(false);
        return;
    }
    setUrl(url);
    if (!m_transfer)
        MorphologyTransfers::instance().start(url, *language, askForKey(m_apiKeyProvider));
}

void TsiInstallationService::abort() {
    if (m_transfer)
        m_transfer->abort();
}

void TsiInstallationService::follow(MorphologyTransfer* transfer) {
    if (m_transfer == transfer)
        return;
    if (m_transfer)
        disconnect(m_transfer, nullptr, this, nullptr);
    m_transfer = transfer;
    if (transfer) {
        // Before this object: at `finished` the summary doesn't count the transfer any more.
        if (m_summary)
            m_summary->add(transfer);
        connect(transfer, &MorphologyTransfer::progressChanged, this,
                &TsiInstallationService::progressChanged);
        connect(transfer, &MorphologyTransfer::canAbortChanged, this,
                &TsiInstallationService::canAbortChanged);
        connect(transfer, &MorphologyTransfer::ended, this, &TsiInstallationService::take);
    }
    tellAll();
}

void TsiInstallationService::take(bool success, const QString& errorText) {
    disconnect(m_transfer, nullptr, this, nullptr);
    m_transfer = nullptr;
    if (m_errorText != errorText) {
        m_errorText = errorText;
        Q_EMIT errorTextChanged();
    }
    tellAll();
    Q_EMIT finished(success);
}

void TsiInstallationService::tellAll() {
    Q_EMIT runningChanged();
    Q_EMIT progressChanged();
    Q_EMIT canAbortChanged();
}

} // namespace tessaly::services
