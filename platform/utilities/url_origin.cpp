#include "url_origin.h"

#include <curl/curl.h>
#include <memory>

namespace tessaly::utilities {

namespace {

std::string part(CURLU* address, CURLUPart which) {
    char* text = nullptr;
    if (curl_url_get(address, which, &text, CURLU_DEFAULT_PORT) != CURLUE_OK)
        return {};
    const std::unique_ptr<char, void (*)(void*)> owner(text, curl_free);
    return text;
}

} // namespace

std::string urlOrigin(const std::string& url) {
    const std::unique_ptr<CURLU, void (*)(CURLU*)> address(curl_url(), curl_url_cleanup);
    // Addresses without a scheme are libcurl's to guess at; it takes them for http in most cases.
    if (!address ||
        curl_url_set(address.get(), CURLUPART_URL, url.c_str(), CURLU_DEFAULT_SCHEME) != CURLUE_OK)
        return {};
    std::string host = part(address.get(), CURLUPART_HOST);
    for (char& letter : host)
        letter = letter >= 'A' && letter <= 'Z' ? char(letter - 'A' + 'a') : letter;
    return part(address.get(), CURLUPART_SCHEME) + "://" + host + ':' + part(address.get(), CURLUPART_PORT);
}

} // namespace tessaly::utilities
