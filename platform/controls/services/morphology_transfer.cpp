#include "morphology_transfer.h"

#include "morphology_data.h"

#include <QThreadPool>
#include <base/device_root.h>
#include <chrono>
#include <common_utilities/defer_sleep.h>
#include <common_utilities/log_line.h>
#include <dictionaries/morph_explorer.h>
#include <filesystem>
#include <stdexcept>
#include <vellum/clock.h>
#include <vellum/vellum.h>

namespace tessaly::services {

namespace {

using namespace std::chrono_literals;

constexpr long long largestArchive = 64LL << 20;
constexpr double fetchedProgress = 0.95;

/// Host path; makes the directory if there is none.
std::string dataDirectory() {
    const std::string path = base::hostPath(morphology::HunspellSearcher::defaultDir());
    std::filesystem::create_directory(path);
    return path;
}

} // namespace

MorphologyTransfer::MorphologyTransfer(const QString& url, const std::string& language, const QString& apiKey,
                                       QObject* parent)
    : QObject(parent)
    , m_url(url)
    , m_language(language)
    , m_staging(dataDirectory(), stagingPrefix)
    , m_downloader(morphology::HunspellSearcher::defaultDir() + '/' +
                       std::filesystem::path(m_staging.path()).filename().string(),
                   {{{"X-Api-Key", apiKey.toStdString()}}, largestArchive}) {
    connect(&m_look, &QTimer::timeout, this, &MorphologyTransfer::changed);
}

void MorphologyTransfer::start(QThreadPool& pool) {
    m_look.start(200ms); // as often as an e-paper screen can follow
    pool.start([this] {
        const DeferSleep untilTheEnd("morphology");
        const auto leave = [this, success = bring()] {
            if (m_phase.exchange(Phase::Over) != Phase::Over)
                Q_EMIT ended(success);
            deleteLater();
        };
        QMetaObject::invokeMethod(this, leave, Qt::QueuedConnection);
    });
}

/// On the worker, as the next one.
bool MorphologyTransfer::bring() {
    try {
        fetch();
        if (!enter(Phase::Placing))
            return false;
        QMetaObject::invokeMethod(this, &MorphologyTransfer::changed, Qt::QueuedConnection);
        placeLanguage(m_staging.path(), m_language);
        return true;
    } catch (const std::exception& error) {
        if (isRunning() && !vellum::clock::isQuitting())
            LogLine(log::cb::error) << "No morphology data from " << m_url << ": " << error.what();
        return false;
    }
}

void MorphologyTransfer::fetch() {
    if (NetConnect2(nullptr, 1) != 0)
        throw std::runtime_error("the device is offline");
    const std::string name = m_language + ".zip";
    if (!m_downloader.Download(m_url.toStdString(), name, 0, "morphology data")) {
        std::string reason;
        m_downloader.GetProgress(nullptr, &reason, nullptr, nullptr);
        throw std::runtime_error(reason);
    }
    unpackLanguage(m_staging.path() + '/' + name, m_language, m_staging.path());
}

bool MorphologyTransfer::enter(Phase phase) {
    Phase before = Phase::Fetching;
    return m_phase.compare_exchange_strong(before, phase);
}

void MorphologyTransfer::abort() {
    if (!enter(Phase::Over))
        return;
    m_downloader.CancelCurrent();
    Q_EMIT ended(false);
}

double MorphologyTransfer::progress() const {
    int total = 1;
    int done = 0;
    m_downloader.GetProgress(nullptr, nullptr, &total, &done);
    return fetchedProgress * done / total;
}

} // namespace tessaly::services
