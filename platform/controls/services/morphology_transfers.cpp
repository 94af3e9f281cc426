#include "morphology_transfers.h"

#include "morphology_transfer.h"
#include "staged_language.h"

#include <QCoreApplication>
#include <QPointer>

namespace tessaly::services {

namespace {

constexpr int mostAtOnce = 4; // the others wait for their turn

QPointer<MorphologyTransfers>& theTransfers() {
    static QPointer<MorphologyTransfers> transfers;
    return transfers;
}

void deleteTransfers() {
    delete theTransfers();
}

} // namespace

MorphologyTransfers& MorphologyTransfers::instance() {
    if (!theTransfers()) {
        theTransfers() = new MorphologyTransfers;
        qAddPostRoutine(deleteTransfers); // runs as the application object begins to go
    }
    return *theTransfers();
}

MorphologyTransfers::MorphologyTransfers() {
    m_pool.setMaxThreadCount(mostAtOnce);
    m_pool.start(StagedLanguage::clearLeftovers);
}

MorphologyTransfers::~MorphologyTransfers() {
    const auto running = m_running.values();
    for (MorphologyTransfer* const transfer : running)
        transfer->abort();
    m_pool.waitForDone();
    for (MorphologyTransfer* const transfer : running)
        QCoreApplication::sendPostedEvents(transfer, QEvent::MetaCall);
}

void MorphologyTransfers::start(const QString& url, const std::string& language, const QString& apiKey) {
    auto* const transfer = new MorphologyTransfer(url, language, apiKey, this);
    connect(transfer, &MorphologyTransfer::ended, this, [this, url] { m_running.remove(url); });
    connect(transfer, &MorphologyTransfer::workerLeft, transfer, &QObject::deleteLater);
    m_running.insert(url, transfer);
    transfer->start(m_pool);
    Q_EMIT started(transfer);
}

} // namespace tessaly::services
