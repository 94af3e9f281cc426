#include "morphology_transfers.h"

#include "morphology_data.h"
#include "morphology_transfer.h"

#include <QCoreApplication>
#include <QtCore/qapplicationstatic.h>
#include <common_utilities/log_line.h>

namespace tessaly::services {

namespace {

constexpr int mostAtOnce = 4; // the others wait for their turn

Q_APPLICATION_STATIC(MorphologyTransfers, transfers)

} // namespace

MorphologyTransfers& MorphologyTransfers::instance() {
    return *transfers;
}

MorphologyTransfers::MorphologyTransfers() {
    m_pool.setMaxThreadCount(mostAtOnce);
    m_pool.start(clearLeftovers);
}

MorphologyTransfers::~MorphologyTransfers() {
    const auto all = findChildren<MorphologyTransfer*>();
    for (MorphologyTransfer* const transfer : all)
        transfer->abort();
    m_pool.waitForDone();
    for (MorphologyTransfer* const transfer : all) // how the rest ended
        QCoreApplication::sendPostedEvents(transfer, QEvent::MetaCall);
}

MorphologyTransfer* MorphologyTransfers::running(const QString& url) const {
    for (MorphologyTransfer* const transfer : findChildren<MorphologyTransfer*>()) {
        if (transfer->isRunning() && transfer->url() == url)
            return transfer;
    }
    return nullptr;
}

void MorphologyTransfers::start(const QString& url, const std::string& language, const QString& apiKey) {
    try {
        auto* const transfer = new MorphologyTransfer(url, language, apiKey, this);
        transfer->start(m_pool);
        Q_EMIT started(transfer);
    } catch (const std::exception& error) {
        LogLine(log::cb::error) << "No morphology data from " << url << ": " << error.what();
    }
}

} // namespace tessaly::services
