#pragma once

#include <string>
#include <string_view>

namespace tessaly::utilities {

/// The hidden file in which a download grows, in the folder where it will stay. It is locked while its owner
/// lives, so that what a killed process left is told from what another is writing. One thread at a time.
class PartFile {
public:
    /// Removes what dead downloads left in the folder, and starts a file. `name` is that of the finished one,
    /// within the folder; an older one is removed. Throws std::system_error, as all of the functions do.
    PartFile(const std::string& hostFolder, const std::string& name);
    /// Removes the file unless it was finished.
    ~PartFile();
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    void write(std::string_view data);
    /// Gives the file, safely on the disk, its name.
    void finish();

private:
    /// A file descriptor, or -1.
    class Descriptor {
    public:
        explicit Descriptor(int number = -1)
            : m_number(number) {}
        ~Descriptor();
        Descriptor(Descriptor&& other) noexcept;
        Descriptor& operator=(Descriptor&& other) noexcept;
        operator int() const { return m_number; } // NOLINT(google-explicit-constructor)

    private:
        int m_number;
    };

    void removeLeftovers() const;
    bool create();

    Descriptor m_folder;
    std::string m_name;
    std::string m_partName;
    Descriptor m_file;
    long long m_unsynced = 0; ///< bytes
};

} // namespace tessaly::utilities
