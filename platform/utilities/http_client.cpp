#include <utilities/http_client.h>

#include "web_access.h"

#include <common_utilities/log_line.h>

#include <curl/curl.h>
#include <exception>
#include <new>

namespace tessaly::utilities {

namespace {

HttpLimits& sharedLimits() {
    static HttpLimits limits;
    return limits;
}

HttpResponse send(const std::string& url, const HttpLimits& limits, const HttpClient::Headers& headers,
                  const std::string* postBody, const std::stop_token& stop, const std::string& etag = {}) {
    try {
        return WebAccess::instance().send(url, limits, headers, postBody, etag, stop);
    } catch (const std::bad_alloc&) {
        return {CURLE_OUT_OF_MEMORY, 0, {}, {}};
    } catch (const std::exception& failure) {
        LogLine(log::cb::error) << "Can not request " << url << ": " << failure.what();
        return {CURLE_FAILED_INIT, 0, {}, {}};
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

std::string HttpClient::errorText(int curlCode) {
    try {
        return WebAccess::instance().errorText(curlCode);
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

HttpLimits HttpClient::defaultLimits() {
    return sharedLimits();
}

void HttpClient::setDefaultLimits(const HttpLimits& limits) {
    sharedLimits() = limits;
}

} // namespace tessaly::utilities
