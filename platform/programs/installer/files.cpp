#include "files.h"

#include "failure.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/sendfile.h>
#include <unistd.h>
#include <vector>

namespace tessaly::installer {

namespace fs = std::filesystem;

void writeAll(const FileDescriptor& file, std::span<const char> bytes, const std::string& path, Code code) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file.get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            throw systemFailure(code, "Can not write " + path, errno);
        bytes = bytes.subspan(std::size_t(written));
    }
}

void copyFile(const std::string& from, const std::string& to, Code code) {
    const FileDescriptor input(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
    const FileDescriptor output(::open(to.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0644));
    ssize_t count = input.isOpen() && output.isOpen() ? 1 : -1;
    while (count > 0)
        count = ::sendfile(output.get(), input.get(), nullptr, std::size_t{1} << 20);
    if (count < 0)
        throw systemFailure(code, "Can not copy " + from + " to " + to, errno);
}

void syncToDisk(const std::string& path, Code code) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen() || ::fsync(file.get()) != 0)
        throw systemFailure(code, "Can not sync " + path, errno);
}

void requireFolder(const std::string& path, Code code) {
    std::error_code error;
    fs::create_directory(path, error);
    if (!fs::is_directory(path))
        throw systemFailure(code, "Can not create the folder " + path, error ? error.value() : ENOTDIR);
}

void removeNamed(const std::string& folder, const std::string& beginning, Code code) {
    std::error_code error;
    // Collected first: what a folder lists while entries vanish from it is undefined.
    std::vector<fs::path> found;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().filename().string().starts_with(beginning))
            found.push_back(entry->path());
    }
    for (const fs::path& path : found) {
        if (!error)
            fs::remove_all(path, error);
    }
    if (error)
        throw systemFailure(code, "Can not clean up " + folder, error.value());
}

} // namespace tessaly::installer
