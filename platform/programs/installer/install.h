#pragma once

#include <string>

namespace tessaly::installer {

class StatusFile;

/// Installs all dictionaries of a package or none. `packageName` is the package's file name in the download
/// folder, with or without a slash before it. Progress goes to `status`, the result doesn't. Throws a
/// Failure; then, and after a kill at any moment, the dictionaries installed before are whole. Needs the
/// InstallerLock.
void install(const std::string& packageName, StatusFile& status);

} // namespace tessaly::installer
