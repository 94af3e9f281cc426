#include "part_file.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace tessaly::utilities {

namespace {

constexpr std::size_t syncedAtOnce = 8 << 20;

const std::string& withoutOlder(const std::string& directory, const std::string& name) {
    if (::unlink((directory + '/' + name).c_str()) != 0 && errno != ENOENT)
        base::throwSystemError("cannot remove the older file");
    return directory;
}

} // namespace

PartFile::PartFile(const std::string& directory, const std::string& name)
    : m_directory(withoutOlder(directory, name))
    , m_name(name)
    , m_staging(directory, ".tsi-download-")
    , m_file(base::openFile(m_staging.path() + '/' + name, O_CREAT | O_EXCL | O_WRONLY)) {}

void PartFile::write(std::string_view data) {
    base::writeAll(m_file, data);
    m_unsynced += data.size();
    if (m_unsynced >= syncedAtOnce) {
        // Only starts it; then there is little left to wait for at the end.
        ::sync_file_range(m_file.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
        m_unsynced = 0;
    }
}

void PartFile::finish() {
    base::syncToDisk(m_file);
    std::filesystem::rename(m_staging.path() + '/' + m_name, m_directory + '/' + m_name);
    base::syncToDisk(m_directory);
}

} // namespace tessaly::utilities
