#include "curl_request.h"
#include "transfer.h"
#include "web_access.h"

#include <utility>

namespace tessaly::utilities {

namespace {

class CurlAccess final : public WebAccess {
public:
    [[nodiscard]] HttpResponse send(const std::string& url, const HttpLimits& limits,
                                    const HttpClient::Headers& headers, const std::string* postBody,
                                    const std::string& etag, const std::stop_token& stop) const override {
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
    }

    bool fetch(const Fetch& what, TransferProgress& progress, const std::stop_token& stop,
               std::mutex& stopping) const override {
        Transfer transfer(what, progress, stop);
        if (transfer.isStopped())
            return false;
        PartFile file(what.directory, what.name);
        transfer.receive(file);
        if (transfer.isStopped())
            return false;
        file.check(what.source.manifestSha256);
        {
            const std::lock_guard lock(stopping);
            if (stop.stop_requested())
                return false;
            file.publish();
        }
        return true;
    }

    [[nodiscard]] std::string errorText(int curlCode) const override {
        return curl_easy_strerror(static_cast<CURLcode>(curlCode));
    }
};

} // namespace

} // namespace tessaly::utilities

/// Found by its name (WebAccess::instance()).
extern "C" TESSALY_UTILITIES_API const tessaly::utilities::WebAccess* tessaly_webAccess() {
    static const tessaly::utilities::CurlAccess access;
    return &access;
}
