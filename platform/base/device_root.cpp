#include <base/device_root.h>

#include <cstdlib>

namespace tessaly::base {

std::string deviceRoot() {
    const char* root = std::getenv("TESSALY_DEVICE_ROOT");
    std::string result = root ? root : "";
    while (result.ends_with('/'))
        result.pop_back();
    return result;
}

std::string hostPath(const std::string& devicePath) {
    return deviceRoot() + devicePath;
}

} // namespace tessaly::base
