#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <string>

namespace tessaly::services {

class MorphologyTransfer;

/// The transfers of this process that run, one per address. GUI thread.
class MorphologyTransfers : public QObject {
    Q_OBJECT

public:
    /// Made on first use, which also has what killed processes left on the device cleared away. Lives as long
    /// as the application object: then transfers are aborted, and those that are too far for that awaited.
    static MorphologyTransfers& instance();
    ~MorphologyTransfers() override;

    /// Null if none runs with this address. Transfers are deleted some time after their end.
    [[nodiscard]] MorphologyTransfer* find(const QString& url) const { return m_running.value(url); }
    /// None runs with this address yet.
    void start(const QString& url, const std::string& language, const QString& apiKey);

Q_SIGNALS:
    void started(tessaly::services::MorphologyTransfer* transfer);

private:
    MorphologyTransfers();

    QHash<QString, MorphologyTransfer*> m_running;
    QThreadPool m_pool;
};

} // namespace tessaly::services
