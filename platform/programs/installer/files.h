#pragma once

#include "installer_codes.h"

#include <span>
#include <string>
#include <zip/file_descriptor.h>

namespace tessaly::installer {

using zip::FileDescriptor;

// Paths are host paths. `code` is that of the Failure thrown when the system refuses.

/// `path` is for the message.
void writeAll(const FileDescriptor& file, std::span<const char> bytes, const std::string& path, Code code);

/// To a new file. The standard library's own doesn't tell a full disk from other errors.
void copyFile(const std::string& from, const std::string& to, Code code);

/// Returns when the file's content, or the folder's list of names, is on the disk.
void syncToDisk(const std::string& path, Code code);

/// Creates the folder itself but none above it.
void requireFolder(const std::string& path, Code code);

/// Removes the files and folders in `folder` whose names begin like this.
void removeNamed(const std::string& folder, const std::string& beginning, Code code);

} // namespace tessaly::installer
