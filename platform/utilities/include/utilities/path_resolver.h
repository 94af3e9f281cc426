#pragma once

#include <utilities/export.h>

#include <map>
#include <string>

namespace tessaly::utilities {

/// Expands a named prefix of a path, such as "${SYSTEMDATA}/config". A plain value.
class TESSALY_UTILITIES_API PathResolver {
public:
    explicit PathResolver(std::map<std::string, std::string> prefixes);

    /// The device's own: "${SYSTEMDATA}" is its system data folder.
    static PathResolver newDefault();

    /// The openable path; a path that begins with no known prefix comes back as it is.
    [[nodiscard]] std::string resolvePreffix(const std::string& path) const;

private:
    std::map<std::string, std::string> m_prefixes;
};

} // namespace tessaly::utilities
