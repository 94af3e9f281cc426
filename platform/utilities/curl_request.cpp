#include "curl_request.h"

#include <strings.h>
#include <vellum/clock.h>
#include <vellum/device_state.h>

namespace tessaly::utilities {

namespace {

using Clock = std::chrono::steady_clock;

/// Of all responses on the way and of trailers; libcurl keeps them all in memory.
constexpr std::size_t mostHeaderBytes = std::size_t{256} << 10;

bool isLibraryReady() {
    static const bool isReady = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return isReady;
}

/// libcurl takes texts that end at the first NUL, and sends headers as they come.
bool isOneLine(const std::string& text) {
    using namespace std::string_view_literals;
    return text.find_first_of("\r\n\0"sv) == std::string::npos;
}

std::string part(CURLU* url, CURLUPart which) {
    char* text = nullptr;
    if (curl_url_get(url, which, &text, CURLU_DEFAULT_PORT) != CURLUE_OK)
        return {};
    const std::unique_ptr<char, void (*)(void*)> owner(text, curl_free);
    return text;
}

/// Where a request for this URL goes, as libcurl sees it: "SCHEME://HOST:PORT". Empty if it isn't a URL.
std::string urlOrigin(const std::string& url) {
    const std::unique_ptr<CURLU, void (*)(CURLU*)> parsed(curl_url(), curl_url_cleanup);
    // A URL without a scheme is libcurl's to guess at; it takes it for http in most cases.
    if (!parsed || curl_url_set(parsed.get(), CURLUPART_URL, url.c_str(), CURLU_DEFAULT_SCHEME) != CURLUE_OK)
        return {};
    return part(parsed.get(), CURLUPART_SCHEME) + "://" + part(parsed.get(), CURLUPART_HOST) + ':' +
           part(parsed.get(), CURLUPART_PORT);
}

} // namespace

CurlRequest::CurlRequest(const std::string& url, const HttpLimits& limits)
    : m_url(url)
    , m_maximumSize(limits.responseBytes)
    , m_maximumStall(limits.stallSeconds) {
    if (isLibraryReady()) {
        m_multi.reset(curl_multi_init());
        m_easy.reset(curl_easy_init());
    }
    if (!m_multi || !m_easy)
        refuse(CURLE_FAILED_INIT);
    if (!isOneLine(url))
        refuse(CURLE_URL_MALFORMAT);

    set(CURLOPT_ERRORBUFFER, m_errorBuffer);
    set(CURLOPT_URL, url.c_str());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, 3L);
    set(CURLOPT_PREREQFUNCTION, &CurlRequest::beforeSending);
    set(CURLOPT_PREREQDATA, this);
    set(CURLOPT_NOPROXY, "*");
    set(CURLOPT_NOSIGNAL, 1L);
    // An address that takes long to look up must not hold up the end of a request.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_CONNECTTIMEOUT_MS, limits.connectTimeoutMs);
    set(CURLOPT_TIMEOUT, limits.totalSeconds);
    set(CURLOPT_MAXFILESIZE_LARGE, curl_off_t{limits.responseBytes});
    set(CURLOPT_BUFFERSIZE, 512L * 1024);
    set(CURLOPT_WRITEFUNCTION, &CurlRequest::bodyCallback);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_HEADERFUNCTION, &CurlRequest::headerCallback);
    set(CURLOPT_HEADERDATA, this);
}

template<class T>
void CurlRequest::set(CURLoption option, T value) {
    if (m_easy)
        refuse(curl_easy_setopt(m_easy.get(), option, value));
}

/// The first failure is the one that counts.
void CurlRequest::refuse(CURLcode code) {
    if (m_ownFailure == CURLE_OK)
        m_ownFailure = code;
}

void CurlRequest::addHeader(const std::string& name, const std::string& value) {
    if (name.empty() || name.find(':') != std::string::npos || !isOneLine(name) || !isOneLine(value))
        return refuse(CURLE_BAD_FUNCTION_ARGUMENT);
    // A header without a value is written with a semicolon; a colon alone would remove it.
    appendHeader(value.empty() ? name + ';' : name + ": " + value);
    m_hasSecrets = true;
}

void CurlRequest::appendHeader(const std::string& line) {
    curl_slist* const longer = curl_slist_append(m_headers.get(), line.c_str());
    if (!longer)
        return refuse(CURLE_OUT_OF_MEMORY);
    static_cast<void>(m_headers.release());
    m_headers.reset(longer);
    set(CURLOPT_HTTPHEADER, longer);
}

void CurlRequest::setPostBody(const std::string& body) {
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    set(CURLOPT_COPYPOSTFIELDS, body.data());
}

void CurlRequest::setKnown(const std::string& etag) {
    if (!isOneLine(etag))
        return refuse(CURLE_BAD_FUNCTION_ARGUMENT);
    appendHeader("If-None-Match: " + etag);
}

void CurlRequest::setRange(std::int64_t start, const std::string& etag) {
    const std::string range = std::to_string(start) + '-';
    set(CURLOPT_RANGE, range.c_str());
    if (!isOneLine(etag))
        return refuse(CURLE_BAD_FUNCTION_ARGUMENT);
    appendHeader("If-Range: " + etag);
}

CURLcode CurlRequest::perform(const BodyWriter& writer, const std::stop_token& stop) {
    if (m_ownFailure != CURLE_OK)
        return m_ownFailure;
    if (!vellum::state::isNetworkReachable())
        return CURLE_COULDNT_CONNECT;
    if (curl_multi_add_handle(m_multi.get(), m_easy.get()) != CURLM_OK)
        return CURLE_FAILED_INIT;
    m_writer = &writer;
    const std::stop_callback onStop(stop, [this] { cancel(); });
    const vellum::clock::OnQuit atQuit([this] { cancel(); });
    const CURLcode code = run();
    curl_multi_remove_handle(m_multi.get(), m_easy.get());
    if (m_thrown)
        std::rethrow_exception(m_thrown);
    if (m_isCancelled)
        return CURLE_ABORTED_BY_CALLBACK;
    return m_ownFailure != CURLE_OK ? m_ownFailure : code;
}

CURLcode CurlRequest::run() {
    auto lastByte = Clock::now();
    auto lastLook = lastByte;
    std::int64_t bytes = 0;
    for (int running = 1; running != 0;) {
        if (m_isCancelled)
            return CURLE_ABORTED_BY_CALLBACK;
        if (curl_multi_perform(m_multi.get(), &running) != CURLM_OK)
            return CURLE_FAILED_INIT;
        if (running != 0 && curl_multi_poll(m_multi.get(), nullptr, 0, 500, nullptr) != CURLM_OK)
            return CURLE_FAILED_INIT;
        const auto now = Clock::now();
        if (const std::int64_t soFar = bytesSoFar(); soFar != bytes) {
            bytes = soFar;
            lastByte = now;
        }
        // libcurl's own bound on slowness looks at an average: it would come seconds late.
        if (running != 0 && now - lastByte >= m_maximumStall)
            return CURLE_OPERATION_TIMEDOUT;
        // A network that goes out of reach takes the transfers along.
        if (running != 0 && now - lastLook >= std::chrono::seconds(1)) {
            if (!vellum::state::isNetworkReachable())
                return CURLE_RECV_ERROR;
            lastLook = now;
        }
    }
    int left = 0;
    const CURLMsg* const message = curl_multi_info_read(m_multi.get(), &left);
    return message ? message->data.result : CURLE_FAILED_INIT;
}

/// Whatever came or went: headers, bodies, redirects.
std::int64_t CurlRequest::bytesSoFar() const {
    long headers = 0;
    curl_off_t received = 0;
    curl_off_t sent = 0;
    curl_easy_getinfo(m_easy.get(), CURLINFO_HEADER_SIZE, &headers);
    curl_easy_getinfo(m_easy.get(), CURLINFO_SIZE_DOWNLOAD_T, &received);
    curl_easy_getinfo(m_easy.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
    return headers + received + sent;
}

void CurlRequest::cancel() {
    m_isCancelled = true;
    curl_multi_wakeup(m_multi.get());
}

bool CurlRequest::mayBeSentTo(const std::string& url) const {
    return !m_hasSecrets || url == m_url ||
           ::strcasecmp(urlOrigin(url).c_str(), urlOrigin(m_url).c_str()) == 0;
}

/// Called with a connection made and nothing sent on it yet, for each redirect anew.
int CurlRequest::beforeSending(void* request, char*, char*, int, int) {
    auto* const self = static_cast<CurlRequest*>(request);
    const char* url = nullptr;
    curl_easy_getinfo(self->m_easy.get(), CURLINFO_EFFECTIVE_URL, &url);
    if (url && self->mayBeSentTo(url))
        return CURL_PREREQFUNC_OK;
    self->refuse(CURLE_REMOTE_ACCESS_DENIED);
    return CURL_PREREQFUNC_ABORT;
}

bool CurlRequest::takeBody(std::string_view piece) {
    m_received += static_cast<long long>(piece.size());
    if (m_received > m_maximumSize) {
        refuse(CURLE_FILESIZE_EXCEEDED);
        return false;
    }
    if (m_isCancelled)
        return false;
    (*m_writer)(piece);
    return true;
}

std::size_t CurlRequest::bodyCallback(char* data, std::size_t size, std::size_t count, void* request) {
    auto* const self = static_cast<CurlRequest*>(request);
    try {
        return self->takeBody({data, size * count}) ? size * count : CURL_WRITEFUNC_ERROR;
    } catch (...) { // must not pass through libcurl
        self->m_thrown = std::current_exception();
        return CURL_WRITEFUNC_ERROR;
    }
}

/// Called for each line, those of redirects and trailers included.
std::size_t CurlRequest::headerCallback(char*, std::size_t size, std::size_t count, void* request) {
    auto* const self = static_cast<CurlRequest*>(request);
    self->m_headerBytes += size * count;
    if (self->m_headerBytes <= mostHeaderBytes)
        return size * count;
    self->refuse(CURLE_FILESIZE_EXCEEDED);
    return CURL_WRITEFUNC_ERROR;
}

int CurlRequest::status() const {
    long status = 0;
    curl_easy_getinfo(m_easy.get(), CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

std::int64_t CurlRequest::announcedSize() const {
    curl_off_t size = -1;
    curl_easy_getinfo(m_easy.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &size);
    return size;
}

std::string CurlRequest::header(const char* name) const {
    curl_header* found = nullptr;
    const CURLHcode code = curl_easy_header(m_easy.get(), name, 0, CURLH_HEADER, -1, &found);
    return code == CURLHE_OK ? found->value : "";
}

std::string CurlRequest::errorText(CURLcode code) const {
    return m_errorBuffer[0] != '\0' && m_ownFailure == CURLE_OK ? m_errorBuffer : curl_easy_strerror(code);
}

} // namespace tessaly::utilities
