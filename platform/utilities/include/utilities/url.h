#pragma once

#include <utilities/export.h>

#include <cstdint>
#include <optional>
#include <string>

/// URLs that came from elsewhere. Any thread.
namespace tessaly::utilities {

/// Whether a text is a whole http or https URL.
[[nodiscard]] TESSALY_UTILITIES_API bool isWebUrl(const std::string& text);

/// Where a file is, and what is known of it beforehand: "URL#size=BYTES&manifest_sha256=HEX". Both may be
/// missing, and other names in the fragment are ignored.
struct TESSALY_UTILITIES_API DownloadUrl {
    std::string url; ///< without the fragment
    std::optional<std::int64_t> size;
    std::string manifestSha256; ///< of a package; 64 lower-case digits, empty when not known

    /// Nothing if a size or a checksum is there but makes no sense.
    static std::optional<DownloadUrl> parse(const std::string& text);
};

} // namespace tessaly::utilities
