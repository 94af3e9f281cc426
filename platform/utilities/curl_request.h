#pragma once

#include <utilities/http_client.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <curl/curl.h>
#include <exception>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

namespace tessaly::utilities {

/// One request over http or https that follows a few redirects and keeps to its limits. Used by one thread.
class CurlRequest {
public:
    CurlRequest(const std::string& url, const HttpLimits& limits);

    /// The header may hold a secret: a request with one isn't redirected to another scheme, host or port, but
    /// ends with CURLE_REMOTE_ACCESS_DENIED.
    void addHeader(const std::string& name, const std::string& value);
    /// Makes it a POST.
    void setPostBody(const std::string& body);
    /// Asks for the file unless it still has this ETag (304).
    void setKnown(const std::string& etag);
    /// Asks for the bytes from `start` on (206), if the file still has this ETag, else for all of it (200).
    void setRange(std::int64_t start, const std::string& etag);

    /// Gets the body piece by piece. What it throws ends the request and comes out of perform().
    using BodyWriter = std::function<void(std::string_view)>;
    /// Blocks until the whole response, whatever its status, has been written, or the request failed.
    /// CURLE_ABORTED_BY_CALLBACK within a moment when a stop is requested or the process is about to quit.
    /// Once only.
    CURLcode perform(const BodyWriter& writer, const std::stop_token& stop);

    /// Of the response; known as soon as its body arrives. The size is that of this body, and negative when
    /// it isn't announced. A header that isn't there is empty.
    [[nodiscard]] int status() const;
    [[nodiscard]] std::int64_t announcedSize() const;
    [[nodiscard]] std::string header(const char* name) const;

    /// Why perform() returned `code`.
    [[nodiscard]] std::string errorText(CURLcode code) const;

private:
    template<auto function>
    struct Free {
        template<class T>
        void operator()(T* object) const {
            function(object);
        }
    };
    using Headers = std::unique_ptr<curl_slist, Free<curl_slist_free_all>>;

    template<class T>
    void set(CURLoption option, T value);
    void refuse(CURLcode code);
    void appendHeader(const std::string& line);
    void cancel();
    CURLcode run();
    std::int64_t bytesSoFar() const;
    [[nodiscard]] bool mayBeSentTo(const std::string& url) const;
    bool takeBody(std::string_view piece);
    static int beforeSending(void* request, char*, char*, int, int);
    static std::size_t bodyCallback(char* data, std::size_t size, std::size_t count, void* request);
    static std::size_t headerCallback(char* data, std::size_t size, std::size_t count, void* request);

    const std::string m_url;
    const long long m_maximumSize;
    const std::chrono::seconds m_maximumStall;
    const BodyWriter* m_writer = nullptr; ///< while performing
    long long m_received = 0;             ///< bytes of bodies
    std::size_t m_headerBytes = 0;
    bool m_hasSecrets = false;
    std::exception_ptr m_thrown;
    CURLcode m_ownFailure = CURLE_OK; ///< found by this class rather than by libcurl
    std::atomic<bool> m_isCancelled{false};
    char m_errorBuffer[CURL_ERROR_SIZE] = {};
    Headers m_headers;
    // In this order: the easy handle must go first.
    std::unique_ptr<CURLM, Free<curl_multi_cleanup>> m_multi;
    std::unique_ptr<CURL, Free<curl_easy_cleanup>> m_easy;
};

} // namespace tessaly::utilities
