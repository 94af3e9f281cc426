#include "installed_files.h"

#include <common_utilities/device_path.h>
#include <common_utilities/log_line.h>

#include <filesystem>

namespace tessaly::dictionary {

namespace {

namespace fs = std::filesystem;

constexpr const char* folders[] = {"/ebrmain/dictionaries", "/mnt/secure/dictionaries",
                                   "/mnt/ext1/system/dictionaries", "/mnt/ext2/system/dictionaries"};

bool isPlainName(const std::string& file) {
    return !file.empty() && file != "." && file != ".." && file.find('/') == std::string::npos &&
           file.find('\0') == std::string::npos;
}

} // namespace

void removeInstalledFile(const std::string& file) {
    if (!isPlainName(file))
        return;
    for (const char* const folder : folders) {
        const fs::path path = fs::path(openablePath(std::string(folder))) / file;
        std::error_code error;
        if (!fs::is_regular_file(path, error))
            continue;
        if (!fs::remove(path, error))
            LogLine(2) << "can not remove `" << path.string() << "`: " << error.message();
    }
}

} // namespace tessaly::dictionary
