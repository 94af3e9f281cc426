#pragma once

#include <string>

namespace tessaly::installer {

class StatusFile;

/// Installs all dictionaries of a package or none. `packageName` is the package's file name in the download
/// directory, with or without a slash before it. Progress goes to `status`, the result doesn't. Throws a
/// Failure; then, and after a kill at any moment, what was installed before is whole. The caller holds the
/// InstallerLock, since two runs would clear away each other's files.
void install(const std::string& packageName, StatusFile& status);

} // namespace tessaly::installer
