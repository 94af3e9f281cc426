#pragma once

#include "staged_language.h"

#include <atomic>
#include <functional>
#include <string>
#include <utilities/sync_downloader.h>

namespace tessaly::services {

/// The way of one language's morphology data from the server to their place on the device: a worker runs it,
/// another thread watches.
class MorphologyJob {
public:
    MorphologyJob(const std::string& url, const std::string& language, const std::string& apiKey);

    /// Blocks until the data are there, and returns nothing then, else why they aren't. Connects the device
    /// first. Calls the function when cancel() begins to come too late. Once only.
    std::string run(const std::function<void()>& onPlacing);

    /// The rest: any thread.

    /// Lets run() return within a moment with nothing changed on the device. False if it is too late.
    bool cancel();
    [[nodiscard]] bool canCancel() const { return m_phase == Phase::Fetching; }
    /// 0.0 to 1.0; never falls.
    [[nodiscard]] double progress() const;

private:
    enum class Phase { Fetching, Placing, Cancelled };

    std::string install(const std::function<void()>& onPlacing);
    void fetch();
    bool enter(Phase phase);

    const std::string m_url;
    const std::string m_language;
    StagedLanguage m_staged;
    utilities::SyncDownloader m_downloader;
    std::atomic<Phase> m_phase{Phase::Fetching};
};

} // namespace tessaly::services
