#pragma once

#include <base/library.h>
#include <utilities/http_client.h>
#include <utilities/sync_downloader.h>
#include <utilities/url.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <stop_token>
#include <string>

namespace tessaly::utilities {

/// How far a transfer is, in bytes; for any thread. The total is 0 until it is known. Neither ever falls
/// during a transfer.
struct TransferProgress {
    std::atomic<std::int64_t> total{0};
    std::atomic<std::int64_t> done{0};
};

/// What makes requests. It is loaded when the first one is made: libcurl and libcrypto bring some thirty
/// libraries, which whoever shows a list does without. Any thread.
class WebAccess {
public:
    /// Throws std::runtime_error if it can't be loaded.
    static const WebAccess& instance() {
        using Access = const WebAccess*();
        static const WebAccess& loaded =
            *reinterpret_cast<Access*>(base::loadSymbol("tessaly_curl", "tessaly_webAccess"))();
        return loaded;
    }

    WebAccess() = default;
    virtual ~WebAccess() = default;
    WebAccess(const WebAccess&) = delete;
    WebAccess& operator=(const WebAccess&) = delete;

    /// Blocks until the whole response is there. A POST if there is a body for it; asks for a file only if it
    /// hasn't this ETag any more, unless that is empty.
    [[nodiscard]] virtual HttpResponse send(const std::string& url, const HttpLimits& limits,
                                            const HttpClient::Headers& headers, const std::string* postBody,
                                            const std::string& etag, const std::stop_token& stop) const = 0;

    /// A file, and where it comes to.
    struct Fetch {
        DownloadUrl source;
        std::string directory; ///< on the host
        std::string name;
        DownloadOptions options;
        HttpLimits limits;
    };
    /// Blocks until the file is in its place. False if stopped: a stop that is requested under the mutex
    /// comes before the file has its name, or finds it there. Throws the reason of a failure.
    virtual bool fetch(const Fetch& what, TransferProgress& progress, const std::stop_token& stop,
                       std::mutex& stopping) const = 0;

    /// What libcurl says of its code.
    [[nodiscard]] virtual std::string errorText(int curlCode) const = 0;
};

} // namespace tessaly::utilities
