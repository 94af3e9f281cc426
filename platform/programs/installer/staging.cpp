#include "staging.h"

#include "device_folders.h"
#include "files.h"

#include <filesystem>

namespace tessaly::installer {

namespace {

/// Others that tidy up the secure storage delete plain files named like this. Being a folder keeps it from
/// them while the next run already unpacks.
constexpr const char* folderName = "ts dictionaries";

} // namespace

Staging::Staging()
    : m_folder(stagingStorage() + '/' + folderName) {
    removeNamed(stagingStorage(), folderName, Code::StagingFailed);
    requireFolder(m_folder, Code::StagingFailed);
}

Staging::~Staging() {
    std::error_code ignored; // the next run tries again
    std::filesystem::remove_all(m_folder, ignored);
}

} // namespace tessaly::installer
