#pragma once

#include <base/device_root.h>

#include <string>

namespace tessaly::installer {

/// Host paths of the folders that the installer works in.
inline std::string downloadFolder() {
    return base::hostPath("/mnt/ext1/Downloads");
}
inline std::string stagingStorage() {
    return base::hostPath("/mnt/secure/tspk");
}
inline std::string dictionariesFolder() {
    return base::hostPath("/mnt/ext1/system/dictionaries");
}

} // namespace tessaly::installer
