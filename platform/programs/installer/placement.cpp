#include "placement.h"

#include "device_folders.h"
#include "failure.h"
#include "files.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly::installer {

namespace {

constexpr const char* hiddenBeginning = ".new dictionary ";

bool exchangeFiles(const std::string& one, const std::string& other) {
    return ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
}

void renameFile(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0)
        throw systemFailure(Code::PlacingFailed, "Can not rename " + from + " to " + to, errno);
}

void moveOrCopy(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return;
    if (errno != EXDEV)
        throw systemFailure(Code::PlacingFailed, "Can not move a dictionary to " + to, errno);
    copyFile(from, to, Code::PlacingFailed);
}

} // namespace

Placement::Placement()
    : m_folder(dictionariesFolder()) {
    requireFolder(m_folder, Code::PlacingFailed);
    removeNamed(m_folder, hiddenBeginning, Code::PlacingFailed);
}

Placement::~Placement() {
    for (const File& file : m_files)
        ::unlink(file.hidden.c_str());
}

void Placement::bring(const std::string& path, const std::string& name) {
    const std::string hidden = m_folder + '/' + hiddenBeginning + std::to_string(m_files.size());
    m_files.push_back({hidden, m_folder + '/' + name});
    moveOrCopy(path, hidden);
    syncToDisk(hidden, Code::PlacingFailed);
}

void Placement::commit() {
    try {
        for (File& file : m_files)
            putInPlace(file);
        syncToDisk(m_folder, Code::PlacingFailed);
    } catch (...) {
        for (File& file : m_files)
            takeBack(file);
        throw;
    }
}

void Placement::putInPlace(File& file) const {
    struct stat present {};
    const bool isPresent = ::lstat(file.target.c_str(), &present) == 0;
    if (isPresent && S_ISDIR(present.st_mode))
        throw Failure(Code::PlacingFailed, file.target + " is a folder");
    if (isPresent && exchangeFiles(file.hidden, file.target)) {
        file.state = State::Exchanged;
        return;
    }
    renameFile(file.hidden, file.target);
    file.state = isPresent ? State::Replaced : State::Added;
}

void Placement::takeBack(File& file) const {
    if (file.state == State::Exchanged)
        exchangeFiles(file.hidden, file.target);
    else if (file.state == State::Added)
        ::unlink(file.target.c_str());
    file.state = State::Hidden;
}

} // namespace tessaly::installer
