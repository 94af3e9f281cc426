#pragma once

#include <base/file.h>

#include <chrono>
#include <cstdint>
#include <string>

/// The places that the installer works in, as host paths, and what has to be so before it does. Throws a
/// Failure where that isn't so.
namespace tessaly::installer {

[[nodiscard]] std::string downloadDirectory();
/// On the secure storage; packages are unpacked there.
[[nodiscard]] std::string stagingDirectory();
[[nodiscard]] std::string dictionariesDirectory();

/// Throws NoSpace unless files of this many bytes altogether fit on the secure storage and, if that is
/// another file system, once more among the dictionaries.
void requireSpace(std::int64_t bytes);

/// While it lives, no other installer works on this device. The system lets go of it when the process ends,
/// however that happens.
class InstallerLock {
public:
    /// Waits for a running installer; throws Busy if that one doesn't end in time.
    explicit InstallerLock(std::chrono::milliseconds patience);

private:
    base::FileDescriptor m_directory;
};

} // namespace tessaly::installer
