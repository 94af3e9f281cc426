#pragma once

#include <base/export.h>
#include <base/file.h>

#include <string>

namespace tessaly::base {

/// A directory of its own in which files become ready, out of sight, before they are moved to their places:
///
///     const Staging staging(directory, ".new-");
///     write(staging.path() + "/name");
///     std::filesystem::rename(staging.path() + "/name", directory + "/name");
///
/// It is removed with the object. A killed process can't do that, so each new one clears away what dead
/// owners left; the directory is locked while its owner lives, which tells the two apart. Several may exist
/// at once, in other processes too. What is moved out isn't synced to the disk here.
class TESSALY_BASE_API Staging {
public:
    /// Makes a directory in `parent` whose name is `prefix` and a number. Throws std::system_error.
    Staging(const std::string& parent, const std::string& prefix);
    ~Staging();
    Staging(const Staging&) = delete;
    Staging& operator=(const Staging&) = delete;

    /// Host path of the directory.
    [[nodiscard]] const std::string& path() const { return m_path; }

    /// Removes from `parent` what dead owners left under this prefix, as far as that is possible.
    static void removeLeftovers(const std::string& parent, const std::string& prefix);

private:
    bool create();

    std::string m_path;
    FileDescriptor m_lock;
};

} // namespace tessaly::base
