#include "package_reader.h"

#include "failure.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly::installer {

namespace {

constexpr const char* manifestName = "manifest.json";
constexpr std::size_t readBytes = std::size_t{256} << 10;

FileDescriptor openPlainFile(const std::string& hostPath) {
    // Without O_NONBLOCK a pipe in the download folder would hold up the installer for ever.
    FileDescriptor file(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.isOpen())
        throw systemFailure(Code::PackageUnreadable, "Can not open " + hostPath, errno);
    struct stat info {};
    if (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode))
        throw Failure(Code::PackageUnreadable, hostPath + " is not a plain file");
    return file;
}

[[noreturn]] void refuseArchive(archive* handle) {
    const char* const reason = archive_error_string(handle);
    throw Failure(archive_errno(handle) == EIO ? Code::PackageUnreadable : Code::NotAPackage,
                  std::string("The package is damaged: ") + (reason ? reason : "unknown error"));
}

/// Null at the end.
archive_entry* nextEntry(archive* handle) {
    archive_entry* entry = nullptr;
    const int result = archive_read_next_header(handle, &entry);
    if (result == ARCHIVE_EOF)
        return nullptr;
    if (result != ARCHIVE_OK)
        refuseArchive(handle);
    return entry;
}

std::string plainFileName(archive_entry* entry) {
    const char* const path = archive_entry_pathname_utf8(entry);
    std::string name = path ? path : "";
    if (name.empty() || archive_entry_filetype(entry) != AE_IFREG || archive_entry_hardlink(entry))
        throw Failure(Code::BadEntry, "The package holds more than plain files: \"" + name + "\"");
    return name;
}

std::size_t readSome(archive* handle, std::span<char> buffer) {
    const la_ssize_t count = archive_read_data(handle, buffer.data(), buffer.size());
    if (count < 0)
        refuseArchive(handle);
    return std::size_t(count);
}

std::string readManifest(archive* handle) {
    std::string text(maxManifestBytes + 1, '\0');
    std::size_t size = 0;
    while (const std::size_t count = readSome(handle, std::span(text).subspan(size)))
        size += count;
    if (size > maxManifestBytes)
        throw Failure(Code::BadManifest, "The manifest is too long");
    text.resize(size);
    return text;
}

} // namespace

/// What the archive's directory says.
struct PackageReader::Listing {
    std::optional<std::string> manifest;
    std::map<std::string, std::int64_t> sizes; ///< of all files but the manifest
};

void PackageReader::Free::operator()(archive* handle) const {
    archive_read_free(handle);
}

PackageReader::PackageReader(const std::string& hostPath)
    : m_file(openPlainFile(hostPath)) {
    const Listing listing = readListing();
    if (!listing.manifest)
        throw Failure(Code::NoManifest, "The package has no manifest");
    m_manifest = parseManifest(*listing.manifest);
    requireListedFiles(listing);
    m_archive = openArchive();
}

/// Only archives with a directory at their end are taken: one that was cut short is refused before anything
/// is unpacked.
PackageReader::Handle PackageReader::openArchive() const {
    Handle handle(archive_read_new());
    if (!handle || ::lseek(m_file.get(), 0, SEEK_SET) != 0)
        throw Failure(Code::Unexpected, "Can not start reading the package");
    archive_read_support_format_zip_seekable(handle.get());
    archive_read_set_format_option(handle.get(), "zip", "hdrcharset", "UTF-8");
    if (archive_read_open_fd(handle.get(), m_file.get(), readBytes) != ARCHIVE_OK)
        refuseArchive(handle.get());
    return handle;
}

PackageReader::Listing PackageReader::readListing() const {
    const Handle handle = openArchive();
    Listing listing;
    while (archive_entry* const entry = nextEntry(handle.get())) {
        const std::string name = plainFileName(entry);
        bool isNew = false;
        if (name == manifestName) {
            isNew = !listing.manifest;
            listing.manifest = readManifest(handle.get());
        } else {
            isNew = listing.sizes.emplace(name, archive_entry_size(entry)).second;
        }
        if (!isNew)
            throw Failure(Code::BadEntry, "The package holds \"" + name + "\" twice");
        if (listing.sizes.size() > maxPackageFiles)
            throw Failure(Code::BadEntry, "The package holds too many files");
    }
    return listing;
}

void PackageReader::requireListedFiles(const Listing& listing) const {
    for (const Manifest::File& file : m_manifest.files) {
        const auto found = listing.sizes.find(file.name);
        if (found == listing.sizes.end())
            throw Failure(Code::MissingFile, "The package lacks \"" + file.name + "\"");
        if (found->second != file.size)
            throw Failure(Code::WrongSize, "\"" + file.name + "\" hasn't the size that the manifest says");
    }
    if (listing.sizes.size() != m_manifest.files.size())
        throw Failure(Code::BadEntry, "The package holds files that its manifest doesn't list");
}

std::optional<std::size_t> PackageReader::nextFile() {
    archive_entry* entry = nextEntry(m_archive.get());
    if (entry && plainFileName(entry) == manifestName)
        entry = nextEntry(m_archive.get());
    if (!entry)
        return std::nullopt;
    const std::string name = plainFileName(entry);
    const auto& files = m_manifest.files;
    const auto found =
        std::find_if(files.begin(), files.end(), [&](const auto& file) { return file.name == name; });
    if (found == files.end())
        throw Failure(Code::BadEntry, "The package changed while it was read");
    return std::size_t(found - files.begin());
}

std::size_t PackageReader::read(std::span<char> buffer) {
    return readSome(m_archive.get(), buffer);
}

} // namespace tessaly::installer
