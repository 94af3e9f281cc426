#pragma once

#include <utilities/export.h>

#include <boost/optional.hpp>
#include <map>
#include <stop_token>
#include <string>

namespace tessaly::utilities {

/// Bounds of one request. What exceeds them ends it with an error, never with half a response.
struct HttpLimits {
    long connectTimeoutMs = 5000;
    long stallSeconds = 10;             ///< without a single byte
    long totalSeconds = 60;             ///< for the whole request; 0 is no bound
    long long responseBytes = 16 << 20; ///< of the body
};

struct HttpResponse {
    int curlCode = 0; ///< libcurl's code; anything but 0 is a transport failure, and the rest is then empty
    int status = 0;
    std::string body;
    std::string etag; ///< as it came, to be sent back with the next request; empty if there was none

    [[nodiscard]] bool isTransportFailure() const { return curlCode != 0; }
};

/// Requests that block, over http and https only:
///
///     const HttpResponse response = HttpClient().get(url, {{"X-Api-Key", key}}, stop);
///     if (!response.isTransportFailure() && response.status == 200)
///         use(response.body);
///
/// A request ends within a moment, with libcurl's CURLE_ABORTED_BY_CALLBACK, when a stop is requested or the
/// process is about to quit. It fails at once, as unable to connect, when the device has no network in reach.
/// It follows three redirects at most; cookies, proxies, caches and other methods aren't supported. Any
/// thread, several at once.
class TESSALY_UTILITIES_API HttpClient {
public:
    explicit HttpClient(const HttpLimits& limits = defaultLimits());

    /// Names and values. They may hold secrets: a request with headers isn't redirected to another scheme,
    /// host or port, but fails with CURLE_REMOTE_ACCESS_DENIED.
    using Headers = std::map<std::string, std::string>;
    [[nodiscard]] HttpResponse get(const std::string& url, const Headers& headers = {},
                                   const std::stop_token& stop = {}) const;
    /// The status is 304, without a body, if the file still has this ETag. An empty one is like get().
    [[nodiscard]] HttpResponse getIfChanged(const std::string& url, const std::string& etag) const;
    [[nodiscard]] HttpResponse post(const std::string& url, const std::string& body = {},
                                    const Headers& headers = {}, const std::stop_token& stop = {}) const;

    /// What libcurl says of its code.
    [[nodiscard]] static std::string errorText(int curlCode);

    /// What clients made from now on use. To be set before any other thread makes one.
    static HttpLimits defaultLimits();
    static void setDefaultLimits(const HttpLimits& limits);

private:
    HttpLimits m_limits;
};

} // namespace tessaly::utilities
