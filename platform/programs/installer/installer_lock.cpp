#include "installer_lock.h"

#include "device_folders.h"
#include "failure.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace tessaly::installer {

namespace {

FileDescriptor openStorage() {
    requireFolder(stagingStorage(), Code::StagingFailed);
    FileDescriptor folder(::open(stagingStorage().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen())
        throw systemFailure(Code::StagingFailed, "Can not open " + stagingStorage(), errno);
    return folder;
}

} // namespace

InstallerLock::InstallerLock(std::chrono::milliseconds patience)
    : m_folder(openStorage()) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (::flock(m_folder.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            throw systemFailure(Code::StagingFailed, "Can not lock " + stagingStorage(), errno);
        if (std::chrono::steady_clock::now() >= end)
            throw Failure(Code::Busy, "Another installer is running");
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

} // namespace tessaly::installer
