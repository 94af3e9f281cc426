#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tessaly::installer {

/// What a package says it holds: its manifest.json, checked.
struct Manifest {
    struct File {
        std::string name;      ///< plain file name, UTF-8, ending as dictionaries do
        std::int64_t size = 0; ///< bytes
        std::string sha256;    ///< 64 lower-case hexadecimal digits
    };
    std::vector<File> files; ///< at least one; no two names that differ in letter case only

    [[nodiscard]] std::int64_t totalSize() const;
};

inline constexpr std::size_t maxPackageFiles = 500;

/// Throws a Failure with BadManifest.
[[nodiscard]] Manifest parseManifest(const std::string& json);

} // namespace tessaly::installer
