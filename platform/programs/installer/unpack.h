#pragma once

#include "package_reader.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tessaly::installer {

/// Unpacks the package's current file to a new file at the host path and checks its size and checksum on the
/// way; never writes more than the listed size. `onBytes` is told of each piece. Throws a Failure.
void unpackFile(PackageReader& package, const Manifest::File& file, const std::string& path,
                const std::function<void(std::int64_t)>& onBytes);

} // namespace tessaly::installer
