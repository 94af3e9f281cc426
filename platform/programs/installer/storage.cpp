#include "storage.h"

#include "failure.h"

#include <base/device_root.h>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <vellum/device_state.h>

namespace tessaly::installer {

namespace {

std::int64_t freeBytes(const std::string& directory) {
    return std::int64_t(std::filesystem::space(directory).available);
}

bool areOnOneFileSystem(const std::string& one, const std::string& other) {
    struct stat first {};
    struct stat second {};
    return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev;
}

void requireAtLeast(std::int64_t wanted, std::int64_t available, const std::string& directory) {
    if (available < wanted)
        throw Failure(Code::NoSpace, directory + " has " + std::to_string(available) +
                                         " bytes free, the package needs " + std::to_string(wanted));
}

} // namespace

std::string downloadDirectory() {
    return base::hostPath("/mnt/ext1/Downloads");
}

std::string stagingDirectory() {
    return base::hostPath("/mnt/secure/tspk");
}

std::string dictionariesDirectory() {
    return base::hostPath("/mnt/ext1/system/dictionaries");
}

void requireSpace(std::int64_t bytes) {
    const std::int64_t secure = vellum::state::secureFreeBytes();
    failingWith(Code::StagingFailed, [&] {
        requireAtLeast(bytes, secure >= 0 ? secure : freeBytes(stagingDirectory()), stagingDirectory());
        if (!areOnOneFileSystem(stagingDirectory(), dictionariesDirectory()))
            requireAtLeast(bytes, freeBytes(dictionariesDirectory()), dictionariesDirectory());
    });
}

InstallerLock::InstallerLock(std::chrono::milliseconds patience) {
    failingWith(Code::StagingFailed, [&] {
        std::filesystem::create_directory(stagingDirectory());
        m_directory = base::openFile(stagingDirectory(), O_RDONLY | O_DIRECTORY);
        const auto end = std::chrono::steady_clock::now() + patience;
        while (::flock(m_directory.get(), LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK && errno != EINTR)
                base::throwSystemError("cannot lock " + stagingDirectory());
            if (std::chrono::steady_clock::now() >= end)
                throw Failure(Code::Busy, "Another installer is running");
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    });
}

} // namespace tessaly::installer
