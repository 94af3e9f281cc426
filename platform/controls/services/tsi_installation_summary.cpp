#include <services/tsi_installation_summary.h>

#include "morphology_transfer.h"

#include <algorithm>

namespace tessaly::services {

int TsiInstallationSummary::runningCount() const {
    return int(m_running.size());
}

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
    connect(transfer, &MorphologyTransfer::ended, this, [this, transfer] { remove(transfer); });
    connect(transfer, &MorphologyTransfer::canAbortChanged, this, &TsiInstallationSummary::updateCanAbort);
    Q_EMIT runningCountChanged();
    updateCanAbort();
}

void TsiInstallationSummary::remove(MorphologyTransfer* transfer) {
    disconnect(transfer, nullptr, this, nullptr);
    m_running.removeOne(transfer);
    Q_EMIT runningCountChanged();
    updateCanAbort();
}

void TsiInstallationSummary::updateCanAbort() {
    if (m_toldCanAbort == canAbort())
        return;
    m_toldCanAbort = !m_toldCanAbort;
    Q_EMIT canAbortChanged();
}

} // namespace tessaly::services
