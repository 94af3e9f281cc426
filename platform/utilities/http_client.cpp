#include <utilities/http_client.h>

#include "curl_request.h"

#include <exception>
#include <utility>

namespace tessaly::utilities {

namespace {

HttpLimits& sharedLimits() {
    static HttpLimits limits;
    return limits;
}

HttpResponse send(const std::string& url, const HttpLimits& limits, const HttpClient::Headers& headers,
                  const std::string* postBody, const std::stop_token& stop, const std::string& etag = {}) {
    try {
        std::string body;
        CurlRequest request(url, limits);
        for (const auto& [name, value] : headers)
            request.addHeader(name, value);
        if (postBody)
            request.setPostBody(*postBody);
        if (!etag.empty())
            request.setKnown(etag);
        const CURLcode code = request.perform([&body](std::string_view piece) { body.append(piece); }, stop);
        if (code != CURLE_OK)
            return {code, 0, {}, {}};
        return {CURLE_OK, request.status(), std::move(body), request.header("ETag")};
    } catch (const std::exception&) {
        return {CURLE_OUT_OF_MEMORY, 0, {}, {}};
    }
}

} // namespace

HttpClient::HttpClient(const HttpLimits& limits)
    : m_limits(limits) {}

HttpResponse HttpClient::get(const std::string& url, const Headers& headers,
                             const std::stop_token& stop) const {
    return send(url, m_limits, headers, nullptr, stop);
}

HttpResponse HttpClient::getIfChanged(const std::string& url, const std::string& etag) const {
    return send(url, m_limits, {}, nullptr, {}, etag);
}

HttpResponse HttpClient::post(const std::string& url, const std::string& body, const Headers& headers,
                              const std::stop_token& stop) const {
    return send(url, m_limits, headers, &body, stop);
}

HttpLimits HttpClient::defaultLimits() {
    return sharedLimits();
}

void HttpClient::setDefaultLimits(const HttpLimits& limits) {
    sharedLimits() = limits;
}

} // namespace tessaly::utilities
