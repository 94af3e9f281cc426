#pragma once

#include <dictionaries/export.h>
#include <dictionaries/morph_map.h>

#include <QFileSystemWatcher>
#include <QFutureWatcher>
#include <QTimer>
#include <optional>
#include <stop_token>

namespace tessaly::dictionary {

class MorphSecretProvider;

/// Where the server offers morphology data: values are addresses, invalid where it has none. Empty until
/// somebody asked and the device is connected: then the list is fetched in the background, once. A failure is
/// tried again at growing intervals. GUI thread.
class TESSALY_DICTIONARIES_API MorphUrlMap : public MorphMap {
    Q_OBJECT

public:
    /// `apiKeyProvider` outlives the map.
    MorphUrlMap(const MorphSecretProvider* apiKeyProvider, QObject* parent);
    /// Ends a running fetch, without waiting for it.
    ~MorphUrlMap() override;

protected:
    [[nodiscard]] QVariant find(const QString& code) const override;
    void beginFollowing() override;

private:
    /// Address by language code; nothing after a failure.
    using Urls = std::optional<QHash<QString, QString>>;

    void fetchIfConnected();
    void takeFetched();

    const MorphSecretProvider* m_apiKeyProvider;
    QFileSystemWatcher m_stateDirectory; ///< watched while the device isn't connected
    QTimer m_poll;                       ///< runs after a failure
    int m_pollInterval;
    QFutureWatcher<Urls> m_fetch;
    std::stop_source m_stop;
    Urls m_urls;
};

} // namespace tessaly::dictionary
