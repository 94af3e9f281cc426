#include "morphology_archive.h"

#include <cerrno>
#include <fcntl.h>
#include <set>
#include <stdexcept>
#include <system_error>
#include <unistd.h>
#include <zip/reader.h>

namespace tessaly::services {

namespace {

constexpr std::int64_t largestFile = std::int64_t{64} << 20; // several times the largest there is

void require(bool isSo, const std::string& otherwise) {
    if (!isSo)
        throw std::runtime_error(otherwise);
}

void writeAll(const zip::FileDescriptor& file, std::span<const char> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file.get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            throw std::system_error(errno, std::generic_category(), "can't unpack");
        bytes = bytes.subspan(std::size_t(written));
    }
}

void unpackEntry(zip::Reader& archive, const zip::Reader::Entry& entry, const std::string& path) {
    const zip::FileDescriptor file(::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0644));
    if (!file.isOpen())
        throw std::system_error(errno, std::generic_category(), "can't unpack");
    std::string buffer(std::size_t{256} << 10, '\0');
    std::int64_t size = 0;
    while (const std::size_t count = archive.read(buffer)) {
        size += std::int64_t(count);
        require(size <= entry.size, "the archive holds more of " + entry.name + " than it says");
        writeAll(file, std::span<const char>(buffer.data(), count));
    }
    require(size == entry.size, "the archive holds less of " + entry.name + " than it says");
    if (::fsync(file.get()) != 0)
        throw std::system_error(errno, std::generic_category(), "can't unpack");
}

} // namespace

void unpackMorphology(const std::string& archivePath, const std::string& language,
                      const std::string& folder) {
    std::set<std::string> missing{language + ".aff", language + ".dic"};
    zip::Reader archive(archivePath);
    while (const auto entry = archive.next()) {
        require(missing.erase(entry->name) == 1, "the archive holds \"" + entry->name +
                                                     "\", which isn't of \"" + language +
                                                     "\" or is there twice");
        require(entry->size > 0 && entry->size <= largestFile,
                "the size of " + entry->name + ", " + std::to_string(entry->size) + " bytes, makes no sense");
        unpackEntry(archive, *entry, folder + '/' + entry->name);
    }
    require(missing.empty(), "the archive lacks a file of \"" + language + '"');
}

} // namespace tessaly::services
