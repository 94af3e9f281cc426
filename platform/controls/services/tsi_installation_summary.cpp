#include <services/tsi_installation_summary.h>

#include "morphology_transfer.h"

#include <algorithm>

namespace tessaly::services {

bool TsiInstallationSummary::canAbort() const {
    return std::all_of(m_running.begin(), m_running.end(),
                       [](const MorphologyTransfer* transfer) { return transfer->canAbort(); });
}

void TsiInstallationSummary::abortAll() {
    const QList<MorphologyTransfer*> running = m_running; // each one that ends leaves the list
    for (MorphologyTransfer* const transfer : running)
        transfer->abort();
}

void TsiInstallationSummary::add(MorphologyTransfer* transfer) {
    if (!transfer->isRunning() || m_running.contains(transfer))
        return;
    m_running.append(transfer);
    connect(transfer, &MorphologyTransfer::changed, this, &TsiInstallationSummary::canAbortChanged);
    connect(transfer, &MorphologyTransfer::ended, this, [this, transfer] {
        m_running.removeOne(transfer);
        Q_EMIT runningCountChanged();
        Q_EMIT canAbortChanged();
    });
    Q_EMIT runningCountChanged();
    Q_EMIT canAbortChanged();
}

} // namespace tessaly::services
