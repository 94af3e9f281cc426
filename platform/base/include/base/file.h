#pragma once

#include <base/export.h>

#include <string>
#include <string_view>
#include <utility>

/// Files of the host. Paths are host paths; failures are thrown as std::system_error, with the path in the
/// text. Any thread, though one object serves one thread at a time.
namespace tessaly::base {

/// Owns an open file, or nothing (-1).
class TESSALY_BASE_API FileDescriptor {
public:
    explicit FileDescriptor(int number = -1)
        : m_number(number) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }

    [[nodiscard]] int get() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

private:
    int m_number;
};

/// Opens a file with the flags of open(2); started programs don't inherit it. A file that O_CREAT makes can
/// be read by everybody.
[[nodiscard]] TESSALY_BASE_API FileDescriptor openFile(const std::string& path, int flags);

/// Writes all of the data, however many calls the system takes for it.
TESSALY_BASE_API void writeAll(const FileDescriptor& file, std::string_view data);

/// Returns when a file's content, or a directory's list of names, is on the disk.
TESSALY_BASE_API void syncToDisk(const FileDescriptor& file);
TESSALY_BASE_API void syncToDisk(const std::string& path);

/// Throws what `errno` says; `action` is what was tried ("cannot open /a/b").
[[noreturn]] TESSALY_BASE_API void throwSystemError(const std::string& action);

} // namespace tessaly::base
