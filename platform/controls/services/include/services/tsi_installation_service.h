#pragma once

#include <services/export.h>
#include <services/tsi_installation_summary.h>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tessaly::services {

/// Brings the morphology data of a language from their address on the server, ".../CODE.zip", to their place
/// on the device; and shows the transfer of an address that runs already, whoever started it. The transfer
/// goes on when this object goes; why one fails stands in the log. GUI thread.
///
///     TsiInstallationService { id: service; apiKeyProvider: explorer.apiKeyProvider }
///     Button { visible: !service.running; onClicked: service.install(explorer.urlMap.at("de").value) }
///     ProgressBar { visible: service.running; value: service.progress }
class TESSALY_SERVICES_API TsiInstallationService : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Its invokable `QString apiKey()` is asked at each start for the key that the server wants. Not owned.
    Q_PROPERTY(QObject* apiKeyProvider MEMBER m_apiKeyProvider NOTIFY apiKeyProviderChanged)
    /// Counts what this object starts or finds running. Not owned.
    Q_PROPERTY(tessaly::services::TsiInstallationSummary* summary READ summary WRITE setSummary NOTIFY
                   summaryChanged)
    /// The address whose transfer is shown; install() sets it.
    Q_PROPERTY(QString url READ url WRITE setUrl NOTIFY urlChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    /// 0.0 to 1.0; 0.0 while nothing runs.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    /// Whether abort() would end the transfer: false during the last moment, and when nothing runs.
    Q_PROPERTY(bool canAbort READ canAbort NOTIFY canAbortChanged)

public:
    explicit TsiInstallationService(QObject* parent = nullptr);

    [[nodiscard]] TsiInstallationSummary* summary() const { return m_summary; }
    void setSummary(TsiInstallationSummary* summary);
    [[nodiscard]] QString url() const { return m_url; }
    void setUrl(const QString& url);
    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] double progress() const;
    [[nodiscard]] bool canAbort() const;

    /// Starts the transfer, or shows the one that runs. Where none can be started, since the address is none
    /// of morphology data or the device has no room, finished(false) comes at once.
    Q_INVOKABLE void install(const QString& url);
    /// Ends the transfer, with nothing changed on the device, if canAbort.
    Q_INVOKABLE void abort();

Q_SIGNALS:
    void apiKeyProviderChanged();
    void summaryChanged();
    void urlChanged();
    void runningChanged();
    void progressChanged();
    void canAbortChanged();
    /// The transfer has ended; `running` is false already.
    void finished(bool success);

private:
    void watch(MorphologyTransfer& transfer);

    QPointer<QObject> m_apiKeyProvider;
    QPointer<TsiInstallationSummary> m_summary;
    QString m_url;
    QPointer<MorphologyTransfer> m_transfer; ///< null only when the application is over
};

} // namespace tessaly::services
