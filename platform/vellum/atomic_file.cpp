#include <vellum/atomic_file.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellum {

namespace {

bool writeAll(int file, const std::string& content) {
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t written = ::write(file, content.data() + done, content.size() - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        done += std::size_t(written);
    }
    return ::fchmod(file, 0644) == 0 && ::fsync(file) == 0;
}

void syncFolderOf(const std::string& path) {
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    const int file = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return;
    ::fsync(file);
    ::close(file);
}

} // namespace

bool replaceFile(const std::string& hostPath, const std::string& content) {
    std::string aside = hostPath + ".XXXXXX";
    const int file = ::mkostemp(aside.data(), O_CLOEXEC);
    if (file < 0)
        return false;
    const bool written = writeAll(file, content);
    const bool closed = ::close(file) == 0;
    if (!written || !closed || std::rename(aside.c_str(), hostPath.c_str()) != 0) {
        ::unlink(aside.c_str());
        return false;
    }
    syncFolderOf(hostPath);
    return true;
}

} // namespace vellum
