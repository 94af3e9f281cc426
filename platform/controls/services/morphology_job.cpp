#include "morphology_job.h"

#include "morphology_archive.h"

#include <base/log.h>
#include <ostream>
#include <stdexcept>
#include <vellum/clock.h>
#include <vellum/vellum.h>

namespace tessaly::services {

namespace {

constexpr long long largestArchive = 64LL << 20;
constexpr double fetchedProgress = 0.95;

class StayAwake {
public:
    StayAwake() { vl_sleep_preventor_start(&m_preventor); }
    ~StayAwake() { vl_sleep_preventor_stop(&m_preventor); }
    StayAwake(const StayAwake&) = delete;
    StayAwake& operator=(const StayAwake&) = delete;

private:
    vl_sleep_preventor m_preventor{"morphology", 0};
};

} // namespace

MorphologyJob::MorphologyJob(const std::string& url, const std::string& language, const std::string& apiKey)
    : m_url(url)
    , m_language(language)
    , m_staged(language)
    , m_downloader(m_staged.devicePath(), {{{"X-Api-Key", apiKey}}, largestArchive}) {}

std::string MorphologyJob::run(const std::function<void()>& onPlacing) {
    const StayAwake untilTheEnd;
    std::string error = install(onPlacing);
    m_staged.remove();
    return error;
}

std::string MorphologyJob::install(const std::function<void()>& onPlacing) {
    try {
        fetch();
        if (!enter(Phase::Placing))
            return "stopped";
        onPlacing();
        m_staged.putInPlace();
        return {};
    } catch (const std::exception& error) {
        if (m_phase == Phase::Cancelled || vellum::clock::isAwake())
            return "stopped";
        log::cb::error(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
            return out << "No morphology data from " << m_url << ": " << error.what();
        });
        return error.what();
    }
}

void MorphologyJob::fetch() {
    if (NetConnect2(nullptr, 1) != 0)
        throw std::runtime_error("the device is offline");
    m_staged.create();
    const std::string name = m_language + ".zip";
    if (!m_downloader.Download(m_url, name, 0, "morphology data")) {
        std::string reason;
        m_downloader.GetProgress(nullptr, &reason, nullptr, nullptr);
        throw std::runtime_error(reason);
    }
    unpackMorphology(m_staged.hostPath() + '/' + name, m_language, m_staged.hostPath());
}

bool MorphologyJob::enter(Phase phase) {
    Phase before = Phase::Fetching;
    return m_phase.compare_exchange_strong(before, phase);
}

bool MorphologyJob::cancel() {
    if (!enter(Phase::Cancelled))
        return false;
    m_downloader.CancelCurrent();
    return true;
}

double MorphologyJob::progress() const {
    if (m_phase == Phase::Placing)
        return fetchedProgress;
    int total = 1;
    int done = 0;
    m_downloader.GetProgress(nullptr, nullptr, &total, &done);
    return fetchedProgress * done / total;
}

} // namespace tessaly::services
