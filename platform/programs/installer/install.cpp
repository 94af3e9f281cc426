#include "install.h"

#include "failure.h"
#include "package_reader.h"
#include "placement.h"
#include "status_file.h"
#include "storage.h"

#include <algorithm>
#include <base/sha256.h>
#include <base/staging.h>
#include <fcntl.h>
#include <functional>
#include <vellum/dictionary_database.h>

namespace tessaly::installer {

namespace {

constexpr int unpackedPercent = 80;
constexpr int placedPercent = 99;

/// Others that tidy up the secure storage delete plain files named like this. Being a directory keeps it from
/// them while the next run already unpacks.
constexpr auto stagingPrefix = "ts dictionaries ";

std::string packagePath(const std::string& packageName) {
    const std::string name = packageName.starts_with('/') ? packageName.substr(1) : packageName;
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
        throw Failure(Code::BadArguments, "\"" + packageName + "\" is not the name of a package");
    return downloadDirectory() + '/' + name;
}

/// Unpacks the package's current file to a new one and checks its size and checksum on the way; never writes
/// more than the listed size.
void unpackFile(PackageReader& package, const Manifest::File& file, const std::string& path,
                const std::function<void(std::size_t)>& onBytes) {
    const base::FileDescriptor output = base::openFile(path, O_CREAT | O_EXCL | O_WRONLY);
    base::Sha256 checksum;
    std::int64_t size = 0;
    for (std::string_view piece; !(piece = package.read()).empty();) {
        size += std::int64_t(piece.size());
        if (size > file.size)
            throw Failure(Code::WrongSize, "\"" + file.name + "\" is longer than the manifest says");
        checksum.add(piece);
        base::writeAll(output, piece);
        onBytes(piece.size());
    }
    // A file that is too short hasn't the checksum either.
    if (checksum.finish() != file.sha256)
        throw Failure(Code::WrongChecksum,
                      "\"" + file.name + "\" hasn't the checksum that the manifest says");
    // A hint only: the disk writes while the next file is unpacked, so that syncing later takes less time.
    ::sync_file_range(output.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

void requireDictionary(const std::string& path, const std::string& name) {
    try {
        const vellum::DictionaryDatabase database(path);
    } catch (const std::runtime_error& error) {
        throw Failure(Code::NotADictionary, "\"" + name + "\" is not a dictionary: " + error.what());
    }
}

std::string unpackedPath(const base::Staging& staging, std::size_t index) {
    return staging.path() + '/' + std::to_string(index);
}

void unpackAll(PackageReader& package, const base::Staging& staging, StatusFile& status) {
    const std::int64_t total = std::max<std::int64_t>(package.manifest().totalSize(), 1);
    std::int64_t done = 0;
    while (const auto index = package.nextFile()) {
        const Manifest::File& file = package.manifest().files[*index];
        const std::string path = unpackedPath(staging, *index);
        unpackFile(package, file, path, [&](std::size_t bytes) {
            done += std::int64_t(bytes);
            status.setProgress(int(done * unpackedPercent / total));
        });
        requireDictionary(path, file.name);
    }
}

} // namespace

void install(const std::string& packageName, StatusFile& status) {
    Placement placement;
    const base::Staging staging =
        failingWith(Code::StagingFailed, [] { return base::Staging(stagingDirectory(), stagingPrefix); });
    PackageReader package(packagePath(packageName));
    requireSpace(package.manifest().totalSize());
    failingWith(Code::StagingFailed, [&] { unpackAll(package, staging, status); });

    const auto& files = package.manifest().files;
    for (std::size_t i = 0; i < files.size(); ++i) {
        placement.bring(unpackedPath(staging, i), files[i].name);
        status.setProgress(unpackedPercent +
                           int(i + 1) * (placedPercent - unpackedPercent) / int(files.size()));
    }
    placement.commit();
}

} // namespace tessaly::installer
