#include "part_file.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace tessaly::utilities {

namespace {

constexpr std::size_t blockSize = 2 << 20;

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
    m_collected += data;
    if (m_collected.size() >= blockSize)
        handOver();
}

void PartFile::finish() {
    handOver();
    m_done.get();
    if (!m_sha256.empty() && m_checksum.finish() != m_sha256)
        throw std::runtime_error("the checksum is wrong");
    base::syncToDisk(m_file);
}

void PartFile::publish() {
    std::filesystem::rename(m_staging.path() + '/' + m_name, m_directory + '/' + m_name);
}

void PartFile::handOver() {
    if (m_done.valid())
        m_done.get();
    std::swap(m_block, m_collected);
    m_collected.clear();
    m_done = std::async(std::launch::async, &PartFile::writeBlock, this);
}

void PartFile::writeBlock() {
    if (!m_sha256.empty())
        m_checksum.add(m_block);
    base::writeAll(m_file, m_block);
    // Only starts it; then there is little left to wait for at the end.
    ::sync_file_range(m_file.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

} // namespace tessaly::utilities
