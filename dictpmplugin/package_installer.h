#pragma once

#include <optional>
#include <string>

/// The device's installer of packages, a program that reports through its status file. One thread.
namespace tessaly::dictionary::package_installer {

/// Starts it on a package, named as the downloader names it. The status file says first that nothing has
/// happened yet, so that what an interrupted installation left can't pass for the result of this one: false,
/// and nothing is started, when the file can be neither written nor removed.
bool start(const std::string& packagePath);

/// Whether an installer works, whoever started it.
bool isRunning();

/// How many percent the running installer has done; nothing when none runs. One that says 100 is ended.
std::optional<int> progress();

/// The result of the installer that ended, -1 when the status file doesn't say; resets the file.
int takeOutCode();

/// Removes what installing dictionaries leaves on the secure storage.
void removeLeftovers();

} // namespace tessaly::dictionary::package_installer
