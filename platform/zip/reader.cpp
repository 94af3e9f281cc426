#include <zip/reader.h>

#include <archive.h>
#include <archive_entry.h>
#include <array>
#include <base/file.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly::zip {

namespace {

constexpr std::size_t readBytes = std::size_t{256} << 10;
constexpr std::int64_t longestDirectory = 1 << 20;

std::uint32_t littleEndian(std::span<const unsigned char> bytes) {
    std::uint32_t number = 0;
    for (const unsigned char byte : bytes)
        number = number >> 8 | std::uint32_t{byte} << 24;
    return number >> (32 - 8 * bytes.size());
}

/// libarchive takes the whole directory into memory before it tells of the first entry, so its length is held
/// against the record at the archive's end first. That record is taken where libarchive looks first: without
/// a comment, which could hide another record, and without the extension for more than 4 GiB.
void requireShortDirectory(const base::FileDescriptor& file, std::int64_t size) {
    std::array<unsigned char, 42> end{};
    const std::span record = std::span(end).last<22>();
    const std::int64_t position = size - std::int64_t(record.size());
    if (size < std::int64_t(end.size()) ||
        ::pread(file.get(), end.data(), end.size(), size - std::int64_t(end.size())) != ssize_t(end.size()) ||
        std::memcmp(record.data(), "PK\5\6", 4) != 0 || littleEndian(record.last<2>()) != 0)
        throw Error(Error::Kind::Damaged, "The archive is damaged: it has no directory at its end");
    const std::int64_t start = littleEndian(record.subspan<16, 4>());
    if (std::memcmp(end.data(), "PK\6\7", 4) == 0 || position - start > longestDirectory)
        throw Error(Error::Kind::BadEntry, "The archive's directory is too long");
}

base::FileDescriptor openPlainFile(const std::string& hostPath) {
    // Without O_NONBLOCK a pipe of that name would hold up the reader for ever.
    base::FileDescriptor file(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.isOpen())
        throw Error(Error::Kind::Unreadable, "Can not open " + hostPath + ": " + std::strerror(errno));
    struct stat info {};
    if (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode))
        throw Error(Error::Kind::Unreadable, hostPath + " is not a plain file");
    requireShortDirectory(file, info.st_size);
    return file;
}

[[noreturn]] void refuse(archive* handle) {
    const char* const reason = archive_error_string(handle);
    throw Error(archive_errno(handle) == EIO ? Error::Kind::Unreadable : Error::Kind::Damaged,
                std::string("The archive is damaged: ") + (reason ? reason : "unknown error"));
}

class ArchiveReader final : public Reader {
public:
    explicit ArchiveReader(const std::string& hostPath);

    [[nodiscard]] std::optional<Entry> next() override;
    [[nodiscard]] std::string_view read() override;
    [[nodiscard]] std::string readRest(std::size_t most) override;
    void rewind(Checksums checksums) override;

private:
    struct Free {
        void operator()(archive* handle) const { archive_read_free(handle); }
    };

    base::FileDescriptor m_file;
    std::unique_ptr<archive, Free> m_archive;
};

ArchiveReader::ArchiveReader(const std::string& hostPath)
    : m_file(openPlainFile(hostPath)) {
    ArchiveReader::rewind(Checksums::Compared);
}

void ArchiveReader::rewind(Checksums checksums) {
    m_archive.reset(archive_read_new());
    if (!m_archive)
        throw std::bad_alloc();
    if (::lseek(m_file.get(), 0, SEEK_SET) != 0)
        throw Error(Error::Kind::Unreadable,
                    std::string("Can not read the archive: ") + std::strerror(errno));
    archive_read_support_format_zip_seekable(m_archive.get());
    archive_read_set_format_option(m_archive.get(), "zip", "hdrcharset", "UTF-8");
    if (checksums == Checksums::Ignored)
        archive_read_set_format_option(m_archive.get(), "zip", "ignorecrc32", "1");
    if (archive_read_open_fd(m_archive.get(), m_file.get(), readBytes) != ARCHIVE_OK)
        refuse(m_archive.get());
}

std::optional<Reader::Entry> ArchiveReader::next() {
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

std::string_view ArchiveReader::read() {
    const void* piece = nullptr;
    std::size_t size = 0;
    la_int64_t position = 0;
    int result = ARCHIVE_OK;
    while (result == ARCHIVE_OK && size == 0)
        result = archive_read_data_block(m_archive.get(), &piece, &size, &position);
    if (result != ARCHIVE_OK && result != ARCHIVE_EOF)
        refuse(m_archive.get());
    return {static_cast<const char*>(piece), size};
}

std::string ArchiveReader::readRest(std::size_t most) {
    std::string rest;
    while (rest.size() < most) {
        const std::string_view piece = read();
        if (piece.empty())
            break;
        rest += piece.substr(0, most - rest.size());
    }
    return rest;
}

} // namespace

} // namespace tessaly::zip

/// Found by its name (Reader::open()).
extern "C" [[gnu::visibility("default")]] tessaly::zip::Reader* tessaly_openArchive(const std::string& path) {
    return std::make_unique<tessaly::zip::ArchiveReader>(path).release();
}
