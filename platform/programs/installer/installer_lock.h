#pragma once

#include "files.h"

#include <chrono>

namespace tessaly::installer {

/// While it lives, no other installer works on this device. The system lets go of it when the process ends,
/// however that happens.
class InstallerLock {
public:
    /// Waits for a running installer; throws a Failure with Busy if that one doesn't end in time.
    explicit InstallerLock(std::chrono::milliseconds patience);

private:
    FileDescriptor m_folder;
};

} // namespace tessaly::installer
