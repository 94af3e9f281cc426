#pragma once

#include "manifest.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <zip/reader.h>

namespace tessaly::installer {

/// An open package: a zip archive with manifest.json and exactly the files that it lists, all at the top
/// level. The archive's directory is checked against the manifest on opening, the files' content is for the
/// caller to check.
class PackageReader {
public:
    /// Throws a Failure if the host path isn't such a package. Entry names need a UTF-8 locale.
    explicit PackageReader(const std::string& hostPath);

    [[nodiscard]] const Manifest& manifest() const { return m_manifest; }

    /// Goes on to the next dictionary and returns its index in the manifest; nothing at the end.
    [[nodiscard]] std::optional<std::size_t> nextFile();

    /// The next piece of the current file, which stays until the next call; empty at the file's end. Throws
    /// a Failure.
    [[nodiscard]] std::string_view read();

private:
    struct Listing;

    [[nodiscard]] Listing readListing();
    void requireListedFiles(const Listing& listing) const;

    std::unique_ptr<zip::Reader> m_archive;
    Manifest m_manifest;
};

} // namespace tessaly::installer
