#include "part_file.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tessaly::utilities {

namespace {

constexpr std::string_view prefix = ".tsi-download-";

/// The number of the process and a running one make a name unique among all that live.
std::string newPartName() {
    static std::atomic<int> lastNumber{0};
    return std::string(prefix) + std::to_string(::getpid()) + '-' + std::to_string(++lastNumber);
}

bool isPartName(std::string_view name) {
    return name.starts_with(prefix) &&
           name.substr(prefix.size()).find_first_not_of("0123456789-") == std::string_view::npos;
}

template<class T>
T checked(T result, const std::string& what) {
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

} // namespace

PartFile::Descriptor::~Descriptor() {
    if (m_number >= 0)
        ::close(m_number);
}

PartFile::Descriptor::Descriptor(Descriptor&& other) noexcept
    : m_number(std::exchange(other.m_number, -1)) {}

PartFile::Descriptor& PartFile::Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(m_number, other.m_number);
    return *this;
}

PartFile::PartFile(const std::string& hostFolder, const std::string& name)
    : m_folder(
          checked(::open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), "can't open " + hostFolder))
    , m_name(name) {
    if (::unlinkat(m_folder, m_name.c_str(), 0) != 0 && errno != ENOENT)
        checked(-1, "can't remove the older file");
    removeLeftovers();
    while (!create())
        continue;
}

PartFile::~PartFile() {
    if (m_file >= 0)
        ::unlinkat(m_folder, m_partName.c_str(), 0);
}

void PartFile::removeLeftovers() const {
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(
        ::fdopendir(::openat(m_folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)), ::closedir);
    while (const dirent* const entry = listing ? ::readdir(listing.get()) : nullptr) {
        if (!isPartName(entry->d_name))
            continue;
        const Descriptor file(
            ::openat(m_folder, entry->d_name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) == 0)
            ::unlinkat(m_folder, entry->d_name, 0);
    }
}

/// False if the name is taken, or the file was cleared away as a leftover before it was locked.
bool PartFile::create() {
    m_partName = newPartName();
    Descriptor file(::openat(m_folder, m_partName.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0644));
    if (file < 0 && errno == EEXIST)
        return false;
    checked(int(file), "can't create a file");
    if (::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return false;
    struct stat status = {};
    if (::fstat(file, &status) != 0 || status.st_nlink == 0)
        return false;
    m_file = std::move(file);
    return true;
}

void PartFile::write(std::string_view data) {
    while (!data.empty()) {
        const ssize_t written = ::write(m_file, data.data(), data.size());
        if (written < 0 && errno == EINTR)
            continue;
        data.remove_prefix(std::size_t(checked(written, "can't write")));
        m_unsynced += written;
    }
    if (m_unsynced >= 8 << 20) {
        // Only starts it; then there is little left to wait for at the end.
        ::sync_file_range(m_file, 0, 0, SYNC_FILE_RANGE_WRITE);
        m_unsynced = 0;
    }
}

void PartFile::finish() {
    checked(::fsync(m_file), "can't write");
    checked(::renameat(m_folder, m_partName.c_str(), m_folder, m_name.c_str()), "can't rename");
    m_file = Descriptor();
    ::fsync(m_folder);
}

} // namespace tessaly::utilities
