#pragma once

#include "part_file.h"
#include "web_access.h"

#include <stop_token>
#include <string>

namespace tessaly::utilities {

class CurlRequest;

/// The transfer of one file, in as many requests as it takes: one that breaks off goes on where it was, three
/// times, as long as the server says by its ETag that the file is still the same. Size and bounds are held
/// against the whole. One thread, once only.
class Transfer {
public:
    /// All of these outlive the transfer.
    Transfer(const WebAccess::Fetch& what, TransferProgress& progress, const std::stop_token& stop);

    /// Blocks until the whole file has been written. Throws the reason of a failure. Returns early when a
    /// stop is requested or the process is about to quit.
    void receive(PartFile& file);

    [[nodiscard]] bool isStopped() const;

private:
    std::string receiveSome(PartFile& file);
    void checkHeader(const CurlRequest& request);

    const DownloadUrl& m_source;
    const DownloadOptions& m_options;
    const HttpLimits& m_limits;
    TransferProgress& m_progress;
    const std::stop_token& m_stop;
    std::string m_etag; ///< of the first response; empty if it had none that serves
};

} // namespace tessaly::utilities
