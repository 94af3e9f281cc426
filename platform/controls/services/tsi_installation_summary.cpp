#include <services/tsi_installation_summary.h>

#include "morphology_transfer.h"

#include <algorithm>
#include <functional>

namespace tessaly::services {

int TsiInstallationSummary::runningCount() const {
    return int(
        std::count_if(m_transfers.begin(), m_transfers.end(), std::mem_fn(&MorphologyTransfer::isRunning)));
}

bool TsiInstallationSummary::canAbort() const {
    return std::all_of(m_transfers.begin(), m_transfers.end(), [](const MorphologyTransfer* transfer) {
        return !transfer->isRunning() || transfer->canAbort();
    });
}

void TsiInstallationSummary::abortAll() {
    const auto all = m_transfers; // whoever hears of an end may add another
    for (MorphologyTransfer* const transfer : all)
        transfer->abort();
}

void TsiInstallationSummary::add(MorphologyTransfer* transfer) {
    if (m_transfers.contains(transfer))
        return;
    m_transfers.append(transfer);
    connect(transfer, &MorphologyTransfer::runningChanged, this,
            &TsiInstallationSummary::runningCountChanged);
    connect(transfer, &MorphologyTransfer::changed, this, &TsiInstallationSummary::canAbortChanged);
    connect(transfer, &QObject::destroyed, this, [this, transfer] { m_transfers.removeOne(transfer); });
    Q_EMIT runningCountChanged();
    Q_EMIT canAbortChanged();
}

} // namespace tessaly::services
