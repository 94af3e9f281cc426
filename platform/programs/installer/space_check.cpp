#include "space_check.h"

#include "device_folders.h"
#include "failure.h"

#include <cerrno>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <vellum/device_state.h>

namespace tessaly::installer {

namespace {

std::int64_t freeBytes(const std::string& folder) {
    struct statvfs info {};
    if (::statvfs(folder.c_str(), &info) != 0)
        throw systemFailure(Code::StagingFailed, "Can not ask for the free space of " + folder, errno);
    return std::int64_t(info.f_bavail) * std::int64_t(info.f_frsize);
}

bool areOnOneFileSystem(const std::string& one, const std::string& other) {
    struct stat first {};
    struct stat second {};
    return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev;
}

void requireAtLeast(std::int64_t wanted, std::int64_t available, const std::string& folder) {
    if (available < wanted)
        throw Failure(Code::NoSpace, folder + " has " + std::to_string(available) +
                                         " bytes free, the package needs " + std::to_string(wanted));
}

} // namespace

void requireSpace(std::int64_t bytes) {
    const std::int64_t secure = vellum::state::secureFreeBytes();
    requireAtLeast(bytes, secure >= 0 ? secure : freeBytes(stagingStorage()), stagingStorage());
    if (!areOnOneFileSystem(stagingStorage(), dictionariesFolder()))
        requireAtLeast(bytes, freeBytes(dictionariesFolder()), dictionariesFolder());
}

} // namespace tessaly::installer
