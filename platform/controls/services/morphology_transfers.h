#pragma once

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <string>

namespace tessaly::services {

class MorphologyTransfer;

/// The transfers of this process, no two with one address. GUI thread.
class MorphologyTransfers : public QObject {
    Q_OBJECT

public:
    /// Made on first use, which also has what killed processes left on the device cleared away. Lives as long
    /// as the application object: then transfers are aborted, and those that are too far for that awaited.
    static MorphologyTransfers& instance();
    MorphologyTransfers();
    ~MorphologyTransfers() override;

    /// The one that runs with this address, or null. Transfers are deleted some time after their end.
    [[nodiscard]] MorphologyTransfer* running(const QString& url) const;
    /// None runs with this address yet. That the device has no room for another is logged.
    void start(const QString& url, const std::string& language, const QString& apiKey);

Q_SIGNALS:
    void started(tessaly::services::MorphologyTransfer* transfer);

private:
    QThreadPool m_pool;
};

} // namespace tessaly::services
