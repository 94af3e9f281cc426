#pragma once

#include <cstdlib>
#include <string>

namespace tessaly::base {

/// The host path of an absolute device path: below the directory that TESSALY_DEVICE_ROOT names. Without it
/// (always so on a real device) device paths are host paths. The variable is read anew at each call, and
/// inherited by started programs. Map a path once, just before it is opened. Any thread, as long as no other
/// changes the environment.
inline std::string hostPath(const std::string& devicePath) {
    const char* const root = std::getenv("TESSALY_DEVICE_ROOT");
    std::string path = root ? root : "";
    while (path.ends_with('/'))
        path.pop_back();
    return path + devicePath;
}

} // namespace tessaly::base
