#include <utilities/url.h>

#include <QUrl>
#include <algorithm>
#include <base/sha256.h>
#include <charconv>

namespace tessaly::utilities {

namespace {

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return lower;
}

std::optional<std::int64_t> sizeFrom(std::string_view text) {
    std::int64_t size = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    if (error != std::errc() || end != text.data() + text.size() || size < 0)
        return std::nullopt;
    return size;
}

} // namespace

bool isWebUrl(const std::string& text) {
    const QUrl url(QString::fromStdString(text), QUrl::StrictMode);
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

std::optional<DownloadUrl> DownloadUrl::parse(const std::string& text) {
    const auto hash = text.find('#');
    DownloadUrl result{text.substr(0, hash), std::nullopt, {}};
    std::string_view rest =
        hash == std::string::npos ? std::string_view() : std::string_view(text).substr(hash + 1);
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find('&'));
        rest.remove_prefix(std::min(rest.size(), item.size() + 1));
        if (item.starts_with("size=")) {
            result.size = sizeFrom(item.substr(5));
            if (!result.size)
                return std::nullopt;
        } else if (item.starts_with("manifest_sha256=")) {
            result.manifestSha256 = lowerCase(item.substr(16));
            if (!base::Sha256::isChecksum(result.manifestSha256))
                return std::nullopt;
        }
    }
    return result;
}

} // namespace tessaly::utilities
