#pragma once

#include <base/file.h>
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
    PartFile(const std::string& directory, const std::string& name);

    void write(std::string_view data);

    /// Throws std::runtime_error unless the finished file is a package whose manifest has this SHA-256; with
    /// an empty one nothing is checked. The manifest vouches for the other files, which whoever unpacks them
    /// holds against it: so each byte is hashed once.
    void check(const std::string& manifestSha256) const;
    /// Gives the finished file its name.
    void publish();

private:
    const std::string m_target;
    base::Staging m_staging;
    const std::string m_path; ///< while it grows
    base::FileDescriptor m_file;
};

} // namespace tessaly::utilities
