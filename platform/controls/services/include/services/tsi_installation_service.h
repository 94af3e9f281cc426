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
/// goes on when this object goes. GUI thread.
class TESSALY_SERVICES_API TsiInstallationService : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// An object with a function `apiKey()`, asked at each start for the key that the server wants. Not
    /// owned.
    Q_PROPERTY(
        QObject* apiKeyProvider READ apiKeyProvider WRITE setApiKeyProvider NOTIFY apiKeyProviderChanged)
    /// Counts what this object starts or finds running. Not owned.
    Q_PROPERTY(tessaly::services::TsiInstallationSummary* summary READ summary WRITE setSummary NOTIFY
                   summaryChanged)
    /// The address whose transfer is shown; install() sets it. Undefined is taken for empty.
    Q_PROPERTY(QString url READ url WRITE setUrl RESET resetUrl NOTIFY urlChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    /// 0.0 to 1.0; 0.0 while nothing runs.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    /// Whether abort() would end the transfer: false during the last moment, and when nothing runs.
    Q_PROPERTY(bool canAbort READ canAbort NOTIFY canAbortChanged)
    /// Why the last transfer failed, in English, for logs; empty after a success.
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    explicit TsiInstallationService(QObject* parent = nullptr);

    [[nodiscard]] QObject* apiKeyProvider() const { return m_apiKeyProvider; }
    void setApiKeyProvider(QObject* provider);
    [[nodiscard]] TsiInstallationSummary* summary() const { return m_summary; }
    void setSummary(TsiInstallationSummary* summary);
    [[nodiscard]] QString url() const { return m_url; }
    void setUrl(const QString& url);
    void resetUrl() { setUrl({}); }

    [[nodiscard]] bool isRunning() const { return m_transfer; }
    [[nodiscard]] double progress() const;
    [[nodiscard]] bool canAbort() const;
    [[nodiscard]] QString errorText() const { return m_errorText; }

    /// Starts the transfer, or shows the one that runs. An address that is none of morphology data is
    /// refused: finished(false) comes at once.
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
    void errorTextChanged();
    /// The transfer has ended; `running` is false already.
    void finished(bool success);

private:
    void follow(MorphologyTransfer* transfer);
    void take(bool success, const QString& errorText);
    void tellAll();

    QPointer<QObject> m_apiKeyProvider;
    QPointer<TsiInstallationSummary> m_summary;
    QString m_url;
    QString m_errorText;
    MorphologyTransfer* m_transfer = nullptr; ///< while it runs
};

} // namespace tessaly::services
