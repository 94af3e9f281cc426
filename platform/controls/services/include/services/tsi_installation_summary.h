#pragma once

#include <services/export.h>

#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessaly::services {

class MorphologyTransfer;

/// What the transfers that its services show have in common. It may go before or after them. GUI thread.
class TESSALY_SERVICES_API TsiInstallationSummary : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// How many of them run.
    Q_PROPERTY(int runningCount READ runningCount NOTIFY runningCountChanged)
    /// Whether each one that runs can be aborted now; true when none runs.
    Q_PROPERTY(bool canAbort READ canAbort NOTIFY canAbortChanged)

public:
    using QObject::QObject;

    [[nodiscard]] int runningCount() const;
    [[nodiscard]] bool canAbort() const;

    /// Aborts those that can be.
    Q_INVOKABLE void abortAll();

    /// From now on it is counted whenever it runs.
    void add(MorphologyTransfer* transfer);

Q_SIGNALS:
    void runningCountChanged();
    void canAbortChanged();

private:
    QList<MorphologyTransfer*> m_transfers;
};

} // namespace tessaly::services
