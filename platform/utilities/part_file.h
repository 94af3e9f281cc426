#pragma once

#include <base/file.h>
#include <base/sha256.h>
#include <base/staging.h>

#include <string>
#include <string_view>

namespace tessaly::utilities {

/// The hidden file in which a download grows, in the directory where it will stay; removed with the object
/// unless it was published. Nothing waits for the disk: whoever reads the file after a power cut checks what
/// it holds. Used by one thread. Throws std::system_error.
class PartFile {
public:
    /// Starts a file. `name` is that of the finished one, within the host directory; an older one is removed.
    /// An empty checksum isn't checked.
    PartFile(const std::string& directory, const std::string& name, const std::string& sha256);

    void write(std::string_view data);

    /// Throws std::runtime_error if the checksum is another.
    void finish();
    /// Gives the finished file its name.
    void publish();

private:
    const std::string m_directory;
    const std::string m_name;
    const std::string m_sha256;
    base::Staging m_staging;
    base::FileDescriptor m_file;
    base::Sha256 m_checksum;
};

} // namespace tessaly::utilities
