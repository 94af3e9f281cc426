#include <services/tsi_installation_service.h>

#include "morphology_transfer.h"
#include "morphology_transfers.h"

#include <QRegularExpression>
#include <QUrl>
#include <common_utilities/log_line.h>
#include <optional>

namespace tessaly::services {

namespace {

/// The language whose data are at this address, fit to be a file name: "pt_BR" for "http://HOST/pt_BR.zip".
std::optional<std::string> languageAt(const QString& url) {
    static const QRegularExpression form(
        QStringLiteral("\\A([a-z]{2,3}(?:_(?:[A-Z]{2}|[0-9]{3}))?)\\.zip\\z"));
    const QUrl address(url, QUrl::StrictMode);
    const bool isWeb =
        address.scheme() == QLatin1String("http") || address.scheme() == QLatin1String("https");
    const auto match = form.match(address.fileName(QUrl::FullyEncoded));
    if (!address.isValid() || !isWeb || address.host().isEmpty() || !match.hasMatch())
        return std::nullopt;
    return match.captured(1).toStdString();
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
    follow(MorphologyTransfers::instance().running(url));
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
        LogLine(log::cb::warn) << "Not an address of morphology data: \"" << url << '"';
        Q_EMIT finished(false);
        return;
    }
    setUrl(url);
    if (m_transfer)
        return;
    QString key;
    if (m_apiKeyProvider)
        QMetaObject::invokeMethod(m_apiKeyProvider, "apiKey", Q_RETURN_ARG(QString, key));
    MorphologyTransfers::instance().start(url, *language, key);
    if (!m_transfer)
        Q_EMIT finished(false);
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
        connect(transfer, &MorphologyTransfer::changed, this, &TsiInstallationService::progressChanged);
        connect(transfer, &MorphologyTransfer::changed, this, &TsiInstallationService::canAbortChanged);
        connect(transfer, &MorphologyTransfer::ended, this, [this](bool success) {
            follow(nullptr);
            Q_EMIT finished(success);
        });
    }
    Q_EMIT runningChanged();
    Q_EMIT progressChanged();
    Q_EMIT canAbortChanged();
}

} // namespace tessaly::services
