#include "install.h"

#include "device_folders.h"
#include "dictionary_check.h"
#include "failure.h"
#include "package_reader.h"
#include "placement.h"
#include "space_check.h"
#include "staging.h"
#include "status_file.h"
#include "unpack.h"

#include <algorithm>

namespace tessaly::installer {

namespace {

constexpr int unpackedPercent = 80;
constexpr int placedPercent = 99;

std::string packagePath(const std::string& packageName) {
    const std::string name = packageName.starts_with('/') ? packageName.substr(1) : packageName;
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
        throw Failure(Code::BadArguments, "\"" + packageName + "\" is not the name of a package");
    return downloadFolder() + '/' + name;
}

void unpackAll(PackageReader& package, const Staging& staging, StatusFile& status) {
    const std::int64_t total = std::max<std::int64_t>(package.manifest().totalSize(), 1);
    std::int64_t done = 0;
    while (const auto index = package.nextFile()) {
        const Manifest::File& file = package.manifest().files[*index];
        unpackFile(package, file, staging.path(*index), [&](std::int64_t bytes) {
            done += bytes;
            status.setProgress(int(done * unpackedPercent / total));
        });
        requireDictionary(staging.path(*index), file.name);
    }
}

} // namespace

void install(const std::string& packageName, StatusFile& status) {
    Placement placement;
    const Staging staging;
    PackageReader package(packagePath(packageName));
    requireSpace(package.manifest().totalSize());
    unpackAll(package, staging, status);

    const auto& files = package.manifest().files;
    for (std::size_t i = 0; i < files.size(); ++i) {
        placement.bring(staging.path(i), files[i].name);
        status.setProgress(unpackedPercent +
                           int(i + 1) * (placedPercent - unpackedPercent) / int(files.size()));
    }
    placement.commit();
}

} // namespace tessaly::installer
