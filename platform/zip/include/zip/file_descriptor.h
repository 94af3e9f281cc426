#pragma once

#include <zip/export.h>

#include <utility>

namespace tessaly::zip {

/// Owns an open file, or nothing (-1).
class TESSALY_ZIP_API FileDescriptor {
public:
    explicit FileDescriptor(int number)
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

} // namespace tessaly::zip
