#include "unpack.h"

#include "checksum.h"
#include "failure.h"
#include "files.h"

#include <cerrno>
#include <fcntl.h>

namespace tessaly::installer {

namespace {

constexpr std::size_t pieceBytes = std::size_t{256} << 10;

} // namespace

void unpackFile(PackageReader& package, const Manifest::File& file, const std::string& path,
                const std::function<void(std::int64_t)>& onBytes) {
    const FileDescriptor output(::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0644));
    if (!output.isOpen())
        throw systemFailure(Code::StagingFailed, "Can not create " + path, errno);
    Checksum checksum;
    std::int64_t size = 0;
    std::string buffer(pieceBytes, '\0');
    while (const std::size_t count = package.read(buffer)) {
        const std::span<const char> piece(buffer.data(), count);
        size += std::int64_t(count);
        if (size > file.size)
            throw Failure(Code::WrongSize, "\"" + file.name + "\" is longer than the manifest says");
        checksum.add(piece);
        writeAll(output, piece, path, Code::StagingFailed);
        onBytes(std::int64_t(count));
    }
    // That of a file too short differs too.
    if (checksum.finish() != file.sha256)
        throw Failure(Code::WrongChecksum,
                      "\"" + file.name + "\" hasn't the checksum that the manifest says");
    // A hint only: the disk writes while the next file is unpacked, so that syncing later takes less time.
    ::sync_file_range(output.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

} // namespace tessaly::installer
