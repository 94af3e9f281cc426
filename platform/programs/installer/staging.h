#pragma once

#include <cstddef>
#include <string>

namespace tessaly::installer {

/// The folder on the secure storage where a package is unpacked, gone with the object. Only one at a time:
/// whatever killed runs left is removed first.
class Staging {
public:
    /// Throws a Failure.
    Staging();
    ~Staging();
    Staging(const Staging&) = delete;
    Staging& operator=(const Staging&) = delete;

    /// Where the package's file with this index is unpacked. Its own name plays no part here.
    [[nodiscard]] std::string path(std::size_t file) const { return m_folder + '/' + std::to_string(file); }

private:
    std::string m_folder;
};

} // namespace tessaly::installer
