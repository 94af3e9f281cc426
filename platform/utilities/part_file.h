#pragma once

#include <base/file.h>
#include <base/staging.h>

#include <string>
#include <string_view>

namespace tessaly::utilities {

/// The hidden file in which a download grows, in the directory where it will stay. One thread at a time.
class PartFile {
public:
    /// Starts a file. `name` is that of the finished one, within the host directory; an older one is removed.
    /// Throws std::system_error, as all of the functions do.
    PartFile(const std::string& directory, const std::string& name);

    void write(std::string_view data);
    /// Gives the file, safely on the disk, its name.
    void finish();

private:
    std::string m_directory;
    std::string m_name;
    base::Staging m_staging;
    base::FileDescriptor m_file;
    std::size_t m_unsynced = 0; ///< bytes
};

} // namespace tessaly::utilities
