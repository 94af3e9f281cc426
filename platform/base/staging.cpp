#include <base/staging.h>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tessaly::base {

namespace {

namespace fs = std::filesystem;

bool isStaging(std::string_view name, std::string_view prefix) {
    return name.starts_with(prefix) &&
           name.substr(prefix.size()).find_first_not_of("0123456789-") == std::string_view::npos;
}

bool lock(const FileDescriptor& file) {
    return ::flock(file.get(), LOCK_EX | LOCK_NB) == 0;
}

} // namespace

Staging::Staging(const std::string& parent, const std::string& prefix) {
    static std::atomic<int> lastNumber{0};
    removeLeftovers(parent, prefix);
    do {
        m_path = parent + '/' + prefix + std::to_string(::getpid()) + '-' + std::to_string(++lastNumber);
    } while (!create());
}

Staging::~Staging() {
    std::error_code ignored; // the next one tries again
    fs::remove_all(m_path, ignored);
}

/// False if the name is taken, or somebody took the directory for a leftover before it was locked.
bool Staging::create() {
    if (::mkdir(m_path.c_str(), 0755) != 0) {
        if (errno == EEXIST)
            return false;
        throwSystemError("cannot create " + m_path);
    }
    m_lock = FileDescriptor(::open(m_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!m_lock.isOpen() && errno != ENOENT)
        throwSystemError("cannot open " + m_path);
    if (!lock(m_lock) && errno == EWOULDBLOCK)
        return false;
    struct stat status {};
    return ::fstat(m_lock.get(), &status) == 0 && status.st_nlink > 0;
}

void Staging::removeLeftovers(const std::string& parent, const std::string& prefix) {
    std::error_code ignored;
    // Collected first: what a directory lists while entries vanish from it is undefined.
    std::vector<fs::path> found;
    for (fs::directory_iterator entry(parent, ignored), end; entry != end; entry.increment(ignored)) {
        if (isStaging(entry->path().filename().string(), prefix))
            found.push_back(entry->path());
    }
    for (const fs::path& path : found) {
        const FileDescriptor owned(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (lock(owned))
            fs::remove_all(path, ignored);
    }
}

} // namespace tessaly::base
