#pragma once

#include "part_file.h"

#include <atomic>
#include <cstdint>
#include <stop_token>
#include <string>
#include <utilities/sync_downloader.h>
#include <utilities/url.h>

namespace tessaly::utilities {

class CurlRequest;

/// How far a transfer is, in bytes; for any thread. The total is 0 until it is known. Neither ever falls
/// during a transfer.
struct TransferProgress {
    std::atomic<std::int64_t> total{0};
    std::atomic<std::int64_t> done{0};
};

/// The transfer of one file, in as many requests as it takes: one that breaks off goes on where it was, three
/// times, as long as the server says by its ETag that the file is still the same. Size and bounds are held
/// against the whole. One thread, once only.
class Transfer {
public:
    /// All of these outlive the transfer.
    Transfer(const DownloadUrl& source, const DownloadOptions& options, TransferProgress& progress,
             const std::stop_token& stop);

    /// Blocks until the whole file has been written. Throws the reason of a failure. Returns early when a
    /// stop is requested or the process is about to quit.
    void receive(PartFile& file);

    [[nodiscard]] bool isStopped() const;

private:
    std::string receiveSome(PartFile& file);
    void checkHeader(const CurlRequest& request);

    const DownloadUrl& m_source;
    const DownloadOptions& m_options;
    TransferProgress& m_progress;
    const std::stop_token& m_stop;
    std::string m_etag; ///< of the first response; empty if it had none that serves
};

} // namespace tessaly::utilities
