#pragma once

#include <base/file.h>
#include <base/sha256.h>
#include <base/staging.h>

#include <future>
#include <string>
#include <string_view>

namespace tessaly::utilities {

/// The hidden file in which a download grows, in the directory where it will stay; removed with the object
/// unless it was published. What comes is collected into big blocks, which are summed and written in the
/// background while the next is collected. Used by one thread. Throws std::system_error, also for what went
/// wrong with an earlier block.
class PartFile {
public:
    /// Starts a file. `name` is that of the finished one, within the host directory; an older one is removed.
    /// An empty checksum isn't checked.
    PartFile(const std::string& directory, const std::string& name, const std::string& sha256);

    void write(std::string_view data);

    /// Returns when the file is safely on the disk. Throws std::runtime_error if the checksum is another.
    void finish();
    /// Gives the finished file its name.
    void publish();

private:
    void handOver();
    void writeBlock();

    const std::string m_directory;
    const std::string m_name;
    const std::string m_sha256;
    base::Staging m_staging;
    base::FileDescriptor m_file;
    base::Sha256 m_checksum;
    std::string m_collected;
    std::string m_block;      ///< the background's while m_done is pending
    std::future<void> m_done; // the last: its destructor waits
};

} // namespace tessaly::utilities
