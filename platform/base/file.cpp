#include <base/file.h>

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace tessaly::base {

FileDescriptor::~FileDescriptor() {
    if (isOpen())
        ::close(m_number);
}

FileDescriptor openFile(const std::string& path, int flags) {
    FileDescriptor file(::open(path.c_str(), flags | O_CLOEXEC, 0644));
    if (!file.isOpen())
        throwSystemError("cannot open " + path);
    return file;
}

void writeAll(const FileDescriptor& file, std::string_view data) {
    while (!data.empty()) {
        const ssize_t written = ::write(file.get(), data.data(), data.size());
        if (written >= 0)
            data.remove_prefix(std::size_t(written));
        else if (errno != EINTR)
            throwSystemError("cannot write");
    }
}

void syncToDisk(const FileDescriptor& file) {
    if (::fsync(file.get()) != 0)
        throwSystemError("cannot write");
}

void syncToDisk(const std::string& path) {
    syncToDisk(openFile(path, O_RDONLY));
}

void throwSystemError(const std::string& action) {
    throw std::system_error(errno, std::generic_category(), action);
}

} // namespace tessaly::base
