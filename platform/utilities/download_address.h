#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tessaly::utilities {

/// Where a file is, and what is known of it: "URL#size=BYTES&sha256=HEX". Both are optional, other names are
/// ignored.
struct DownloadAddress {
    std::string url; ///< without the fragment
    std::optional<std::int64_t> size;
    std::string sha256; ///< 64 lower-case digits; empty when not known

    /// Nothing if a size or a checksum is there but makes no sense.
    static std::optional<DownloadAddress> parse(const std::string& text);
};

} // namespace tessaly::utilities
