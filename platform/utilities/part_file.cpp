#include "part_file.h"

#include <base/sha256.h>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>
#include <vellum/dictionary_files.h>
#include <zip/reader.h>

namespace tessaly::utilities {

namespace {

std::string withoutOlder(const std::string& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT)
        base::throwSystemError("cannot remove the older file");
    return path;
}

std::string manifestOf(const std::string& path) {
    const auto package = zip::Reader::open(path);
    while (const auto entry = package->next()) {
        if (entry->name == vellum::manifestName)
            return package->readRest(vellum::maxManifestBytes);
    }
    throw std::runtime_error("the package has no manifest");
}

} // namespace

PartFile::PartFile(const std::string& directory, const std::string& name)
    : m_target(withoutOlder(directory + '/' + name))
    , m_staging(directory, ".tsi-download-")
    , m_path(m_staging.path() + '/' + name)
    , m_file(base::openFile(m_path, O_CREAT | O_EXCL | O_WRONLY)) {}

void PartFile::write(std::string_view data) {
    base::writeAll(m_file, data);
}

void PartFile::check(const std::string& manifestSha256) const {
    if (manifestSha256.empty())
        return;
    base::Sha256 checksum;
    checksum.add(manifestOf(m_path));
    if (checksum.finish() != manifestSha256)
        throw std::runtime_error("the manifest's checksum is wrong");
}

void PartFile::publish() {
    std::filesystem::rename(m_path, m_target);
}

} // namespace tessaly::utilities
