#pragma once

#include "run_state.h"

#include <utilities/sync_downloader.h>

#include <atomic>
#include <string>

namespace tessaly::dictionary {

/// All that one attempt at a package owns, so that an attempt begun right after a cancelled one shares
/// nothing with the worker of the old one, which may still be sleeping. Shared by the interface's thread and
/// the run's worker.
struct PackageRun {
    PackageRun(RunState::Run number, const std::string& ids);

    const RunState::Run number;
    const std::string ids;            ///< server numbers of the dictionaries, "12,40"
    const std::string packagePath;    ///< "/dicts_12_40.tsi", relative to the downloader's folder
    std::atomic<long long> taskId{0}; ///< the server's number of the package, 0 before it gave one
    utilities::SyncDownloader downloader{"/mnt/ext1/Downloads"};
};

} // namespace tessaly::dictionary
