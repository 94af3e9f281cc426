#include <utilities/path_resolver.h>

#include <base/device_root.h>

#include <utility>

namespace tessaly::utilities {

PathResolver::PathResolver(std::map<std::string, std::string> prefixes)
    : m_prefixes(std::move(prefixes)) {}

PathResolver PathResolver::newDefault() {
    return PathResolver({{"${SYSTEMDATA}", base::hostPath("/ebrmain/share")}});
}

std::string PathResolver::resolvePreffix(const std::string& path) const {
    for (const auto& [prefix, folder] : m_prefixes) {
        if (path.starts_with(prefix))
            return folder + path.substr(prefix.size());
    }
    return path;
}

} // namespace tessaly::utilities
