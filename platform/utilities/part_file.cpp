#include "part_file.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>

namespace tessaly::utilities {

namespace {

const std::string& withoutOlder(const std::string& directory, const std::string& name) {
    if (::unlink((directory + '/' + name).c_str()) != 0 && errno != ENOENT)
        base::throwSystemError("cannot remove the older file");
    return directory;
}

} // namespace

PartFile::PartFile(const std::string& directory, const std::string& name, const std::string& sha256)
    : m_directory(withoutOlder(directory, name))
    , m_name(name)
    , m_sha256(sha256)
    , m_staging(directory, ".tsi-download-")
    , m_file(base::openFile(m_staging.path() + '/' + name, O_CREAT | O_EXCL | O_WRONLY)) {}

void PartFile::write(std::string_view data) {
    if (!m_sha256.empty())
        m_checksum.add(data);
    base::writeAll(m_file, data);
}

void PartFile::finish() {
    if (!m_sha256.empty() && m_checksum.finish() != m_sha256)
        throw std::runtime_error("the checksum is wrong");
}

void PartFile::publish() {
    std::filesystem::rename(m_staging.path() + '/' + m_name, m_directory + '/' + m_name);
}

} // namespace tessaly::utilities
