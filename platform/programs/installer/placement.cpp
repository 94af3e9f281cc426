#include "placement.h"

#include "failure.h"
#include "storage.h"

#include <base/file.h>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/sendfile.h>
#include <unistd.h>

namespace tessaly::installer {

namespace {

namespace fs = std::filesystem;

bool exchangeFiles(const std::string& one, const std::string& other) {
    return ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
}

/// The standard library's own doesn't tell a full disk from other errors.
void copyFile(const std::string& from, const std::string& to) {
    const base::FileDescriptor input = base::openFile(from, O_RDONLY);
    const base::FileDescriptor output = base::openFile(to, O_CREAT | O_EXCL | O_WRONLY);
    ssize_t count = 1;
    while (count > 0)
        count = ::sendfile(output.get(), input.get(), nullptr, std::size_t{1} << 20);
    if (count < 0)
        base::throwSystemError("cannot copy " + from + " to " + to);
}

void moveOrCopy(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return;
    if (errno != EXDEV)
        base::throwSystemError("cannot move " + from + " to " + to);
    copyFile(from, to);
}

} // namespace

Placement::Placement()
    : m_staging(failingWith(Code::PlacingFailed, [] {
        fs::create_directory(dictionariesDirectory());
        return base::Staging(dictionariesDirectory(), ".new dictionary ");
    })) {}

void Placement::bring(const std::string& path, const std::string& name) {
    const std::string hidden = m_staging.path() + '/' + std::to_string(m_files.size());
    m_files.push_back({hidden, dictionariesDirectory() + '/' + name});
    failingWith(Code::PlacingFailed, [&] {
        moveOrCopy(path, hidden);
        base::syncToDisk(hidden);
    });
}

void Placement::commit() {
    try {
        failingWith(Code::PlacingFailed, [this] {
            for (File& file : m_files)
                putInPlace(file);
            base::syncToDisk(dictionariesDirectory());
        });
    } catch (...) {
        for (File& file : m_files)
            takeBack(file);
        throw;
    }
}

void Placement::putInPlace(File& file) {
    const fs::file_status present = fs::symlink_status(file.target);
    if (fs::is_directory(present))
        throw Failure(Code::PlacingFailed, file.target + " is a directory");
    if (fs::exists(present) && exchangeFiles(file.hidden, file.target)) {
        file.state = State::Exchanged;
        return;
    }
    fs::rename(file.hidden, file.target);
    file.state = fs::exists(present) ? State::Replaced : State::Added;
}

void Placement::takeBack(File& file) {
    if (file.state == State::Exchanged)
        exchangeFiles(file.hidden, file.target);
    else if (file.state == State::Added)
        ::unlink(file.target.c_str());
    file.state = State::Hidden;
}

} // namespace tessaly::installer
