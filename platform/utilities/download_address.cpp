#include "download_address.h"

#include <algorithm>
#include <base/sha256.h>
#include <charconv>
#include <string_view>

namespace tessaly::utilities {

namespace {

std::optional<std::int64_t> sizeFrom(std::string_view text) {
    std::int64_t size = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    if (error != std::errc() || end != text.data() + text.size() || size < 0)
        return std::nullopt;
    return size;
}

std::optional<std::string> checksumFrom(std::string_view text) {
    if (!base::Sha256::isChecksum(text))
        return std::nullopt;
    std::string digits(text);
    std::transform(digits.begin(), digits.end(), digits.begin(),
                   [](char c) { return c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c; });
    return digits;
}

} // namespace

std::optional<DownloadAddress> DownloadAddress::parse(const std::string& text) {
    const auto hash = text.find('#');
    DownloadAddress address{text.substr(0, hash), std::nullopt, {}};
    std::string_view rest =
        hash == std::string::npos ? std::string_view() : std::string_view(text).substr(hash + 1);
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find('&'));
        rest.remove_prefix(std::min(rest.size(), item.size() + 1));
        if (item.starts_with("size=")) {
            address.size = sizeFrom(item.substr(5));
            if (!address.size)
                return std::nullopt;
        } else if (item.starts_with("sha256=")) {
            const auto checksum = checksumFrom(item.substr(7));
            if (!checksum)
                return std::nullopt;
            address.sha256 = *checksum;
        }
    }
    return address;
}

} // namespace tessaly::utilities
