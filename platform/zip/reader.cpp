#include <zip/reader.h>

#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly::zip {

namespace {

constexpr std::size_t readBytes = std::size_t{256} << 10;

FileDescriptor openPlainFile(const std::string& hostPath) {
    // Without O_NONBLOCK a pipe of that name would hold up the reader for ever.
    FileDescriptor file(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.isOpen())
        throw Error(Error::Kind::Unreadable, "Can not open " + hostPath + ": " + std::strerror(errno));
    struct stat info {};
    if (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode))
        throw Error(Error::Kind::Unreadable, hostPath + " is not a plain file");
    return file;
}

[[noreturn]] void refuse(archive* handle) {
    const char* const reason = archive_error_string(handle);
    throw Error(archive_errno(handle) == EIO ? Error::Kind::Unreadable : Error::Kind::Damaged,
                std::string("The archive is damaged: ") + (reason ? reason : "unknown error"));
}

} // namespace

Error::~Error() = default;

void Reader::Free::operator()(archive* handle) const {
    archive_read_free(handle);
}

Reader::Reader(const std::string& hostPath)
    : m_file(openPlainFile(hostPath)) {
    rewind();
}

/// Only archives with a directory at their end are taken: one that was cut short is refused before anything
/// is unpacked.
void Reader::rewind() {
    m_archive.reset(archive_read_new());
    if (!m_archive)
        throw std::bad_alloc();
    if (::lseek(m_file.get(), 0, SEEK_SET) != 0)
        throw Error(Error::Kind::Unreadable,
                    std::string("Can not read the archive: ") + std::strerror(errno));
    archive_read_support_format_zip_seekable(m_archive.get());
    archive_read_set_format_option(m_archive.get(), "zip", "hdrcharset", "UTF-8");
    if (archive_read_open_fd(m_archive.get(), m_file.get(), readBytes) != ARCHIVE_OK)
        refuse(m_archive.get());
}

std::optional<Reader::Entry> Reader::next() {
    archive_entry* entry = nullptr;
    const int result = archive_read_next_header(m_archive.get(), &entry);
    if (result == ARCHIVE_EOF)
        return std::nullopt;
    if (result != ARCHIVE_OK)
        refuse(m_archive.get());
    const char* const path = archive_entry_pathname_utf8(entry);
    std::string name = path ? path : "";
    if (name.empty() || archive_entry_filetype(entry) != AE_IFREG || archive_entry_hardlink(entry))
        throw Error(Error::Kind::BadEntry, "The archive holds more than plain files: \"" + name + "\"");
    return Entry{std::move(name), archive_entry_size(entry)};
}

std::size_t Reader::read(std::span<char> buffer) {
    const la_ssize_t count = archive_read_data(m_archive.get(), buffer.data(), buffer.size());
    if (count < 0)
        refuse(m_archive.get());
    return std::size_t(count);
}

} // namespace tessaly::zip
