#include "package_reader.h"

#include "failure.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <vellum/dictionary_files.h>

namespace tessaly::installer {

namespace {

Code codeOf(zip::Error::Kind kind) {
    switch (kind) {
    case zip::Error::Kind::Unreadable:
        return Code::PackageUnreadable;
    case zip::Error::Kind::Damaged:
        return Code::NotAPackage;
    case zip::Error::Kind::BadEntry:
        return Code::BadEntry;
    }
    return Code::Unexpected;
}

/// What the call returns, the archive's errors being Failures.
template<class Call>
auto reading(const Call& call) {
    try {
        return call();
    } catch (const zip::Error& error) {
        throw Failure(codeOf(error.kind()), std::string("The package can't be read: ") + error.what());
    }
}

std::string readManifest(zip::Reader& archive) {
    std::string text = archive.readRest(vellum::maxManifestBytes + 1);
    if (text.size() > vellum::maxManifestBytes)
        throw Failure(Code::BadManifest, "The manifest is too long");
    return text;
}

} // namespace

/// What the archive's directory says.
struct PackageReader::Listing {
    std::optional<std::string> manifest;
    std::map<std::string, std::int64_t> sizes; ///< of all files but the manifest
};

PackageReader::PackageReader(const std::string& hostPath)
    : m_archive(reading([&] { return zip::Reader::open(hostPath); })) {
    const Listing listing = reading([this] { return readListing(); });
    if (!listing.manifest)
        throw Failure(Code::NoManifest, "The package has no manifest");
    m_manifest = parseManifest(*listing.manifest);
    requireListedFiles(listing);
    reading([this] { m_archive->rewind(zip::Reader::Checksums::Ignored); }); // the manifest has better ones
}

PackageReader::Listing PackageReader::readListing() {
    Listing listing;
    while (const auto entry = m_archive->next()) {
        bool isNew = false;
        if (entry->name == vellum::manifestName) {
            isNew = !listing.manifest;
            listing.manifest = readManifest(*m_archive);
        } else {
            isNew = listing.sizes.emplace(entry->name, entry->size).second;
        }
        if (!isNew)
            throw Failure(Code::BadEntry, "The package holds \"" + entry->name + "\" twice");
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
    auto entry = reading([this] { return m_archive->next(); });
    if (entry && entry->name == vellum::manifestName)
        entry = reading([this] { return m_archive->next(); });
    if (!entry)
        return std::nullopt;
    const auto& files = m_manifest.files;
    const auto found =
        std::find_if(files.begin(), files.end(), [&](const auto& file) { return file.name == entry->name; });
    if (found == files.end())
        throw Failure(Code::BadEntry, "The package changed while it was read");
    return std::size_t(found - files.begin());
}

std::string_view PackageReader::read() {
    return reading([this] { return m_archive->read(); });
}

} // namespace tessaly::installer
