#include "transfer.h"

#include "curl_request.h"

#include <stdexcept>
#include <utility>
#include <vellum/clock.h>
#include <vellum/vellum.h>

namespace tessaly::utilities {

namespace {

constexpr int mostContinuations = 3;
constexpr int pauseMs = 1000;

void expect(bool isAsExpected, const std::string& otherwise) {
    if (!isAsExpected)
        throw std::runtime_error(otherwise);
}

/// Whether the connection failed, rather than the server or the file.
bool isBreak(CURLcode code) {
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_PARTIAL_FILE:
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
        return true;
    default:
        return false;
    }
}

} // namespace

Transfer::Transfer(const WebAccess::Fetch& what, TransferProgress& progress, const std::stop_token& stop)
    : m_source(what.source)
    , m_options(what.options)
    , m_limits(what.limits)
    , m_progress(progress)
    , m_stop(stop) {
    m_progress.total = m_source.size.value_or(0);
    m_progress.done = 0;
}

void Transfer::receive(PartFile& file) {
    std::string reason = receiveSome(file);
    for (int i = 0; i < mostContinuations && !reason.empty(); ++i) {
        vl_sleep(pauseMs, m_stop);
        reason = receiveSome(file);
    }
    expect(reason.empty(), reason);
    expect(isStopped() || m_progress.done == m_source.size.value_or(m_progress.done),
           "the file is shorter than announced");
}

/// Why the request broke off in a way that lets another one go on; empty if it didn't.
std::string Transfer::receiveSome(PartFile& file) {
    CurlRequest request(m_source.url, m_limits);
    for (const auto& [name, value] : m_options.headers)
        request.addHeader(name, value);
    if (m_progress.done > 0)
        request.setRange(m_progress.done, m_etag);
    bool hasBegun = false;
    const CURLcode code = request.perform(
        [&](std::string_view piece) {
            if (!std::exchange(hasBegun, true))
                checkHeader(request);
            file.write(piece);
            m_progress.done += std::int64_t(piece.size());
            expect(m_progress.done <= m_source.size.value_or(m_options.maximumBytes),
                   "the file is longer than announced");
        },
        m_stop);
    if (isStopped())
        return {};
    if (code != CURLE_OK) {
        expect(isBreak(code) && m_progress.done > 0 && !m_etag.empty(), request.errorText(code));
        return request.errorText(code);
    }
    if (!hasBegun)
        checkHeader(request);
    return {};
}

/// Before the first byte of each body.
void Transfer::checkHeader(const CurlRequest& request) {
    const std::int64_t start = m_progress.done;
    const int status = request.status();
    expect(start == 0 || status != 200, "the file has changed on the server");
    expect(status == (start == 0 ? 200 : 206),
           "the server answered with the status " + std::to_string(status));
    if (start == 0) {
        const std::string etag = request.header("ETag");
        if (etag.starts_with('"')) // a weak one doesn't promise the same bytes
            m_etag = etag;
    } else {
        expect(request.header("Content-Range").starts_with("bytes " + std::to_string(start) + '-'),
               "the server sent another part of the file");
    }
    if (request.announcedSize() < 0)
        return;
    const std::int64_t announced = start + request.announcedSize();
    const std::int64_t known = start == 0 ? m_source.size.value_or(announced) : m_progress.total.load();
    expect(known == 0 || announced == known, "the server announces " + std::to_string(announced) +
                                                 " bytes instead of " + std::to_string(known));
    expect(announced <= m_options.maximumBytes, "the file is too large");
    m_progress.total = announced;
}

bool Transfer::isStopped() const {
    return m_stop.stop_requested() || vellum::clock::isQuitting();
}

} // namespace tessaly::utilities
