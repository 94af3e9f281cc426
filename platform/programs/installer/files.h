#pragma once

#include "installer_codes.h"

#include <span>
#include <string>
#include <utility>

namespace tessaly::installer {

/// Owns an open file, or nothing (-1).
class FileDescriptor {
public:
    explicit FileDescriptor(int number)
        : m_number(number) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    [[nodiscard]] int get() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

private:
    int m_number;
};

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
