#include "staged_language.h"

#include "placement.h"

#include <atomic>
#include <base/device_root.h>
#include <base/log.h>
#include <cerrno>
#include <dictionaries/hunspell_searcher.h>
#include <fcntl.h>
#include <filesystem>
#include <ostream>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace tessaly::services {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view unfinished = ".new ";
constexpr std::string_view complete = ".ready ";

std::string dataFolder() {
    return base::hostPath(morphology::HunspellSearcher::defaultDir());
}

zip::FileDescriptor openFolder(const std::string& path) {
    return zip::FileDescriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// While it lives, no other process and thread makes, places or clears anything among the morphology data.
zip::FileDescriptor lockData() {
    zip::FileDescriptor folder = openFolder(dataFolder());
    int result = folder.isOpen() ? ::flock(folder.get(), LOCK_EX) : -1;
    while (result != 0 && errno == EINTR)
        result = ::flock(folder.get(), LOCK_EX);
    if (result != 0)
        throw std::system_error(errno, std::generic_category(), "can't lock " + dataFolder());
    return folder;
}

void clear(const fs::path& leftover) {
    const std::string name = leftover.filename();
    if (name.starts_with(complete)) {
        placeFrom(leftover, name.substr(complete.size()));
    } else if (name.starts_with(unfinished)) {
        const zip::FileDescriptor folder = openFolder(leftover);
        if (!folder.isOpen() || ::flock(folder.get(), LOCK_EX | LOCK_NB) == 0)
            fs::remove_all(leftover);
    }
}

/// Needs the lock.
void clearAll() {
    // Collected first: what a folder lists while entries vanish from it is undefined.
    const std::vector<fs::path> entries(fs::directory_iterator{dataFolder()}, fs::directory_iterator{});
    for (const fs::path& entry : entries) {
        try {
            clear(entry);
        } catch (const std::exception& error) { // what is wrong with one must not keep others from coming
            log::cb::warn(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
                return out << "Can not clear " << entry << ": " << error.what();
            });
        }
    }
}

} // namespace

StagedLanguage::StagedLanguage(const std::string& language)
    : m_language(language) {
    static std::atomic<int> lastNumber{0};
    m_name = std::string(unfinished) + language + '-' + std::to_string(::getpid()) + '-' +
             std::to_string(++lastNumber);
}

void StagedLanguage::create() {
    fs::create_directory(dataFolder());
    const zip::FileDescriptor lock = lockData();
    clearAll();
    fs::create_directory(hostPath());
    m_lock = openFolder(hostPath());
    if (!m_lock.isOpen() || ::flock(m_lock.get(), LOCK_EX | LOCK_NB) != 0)
        throw std::system_error(errno, std::generic_category(), "can't lock " + hostPath());
}

void StagedLanguage::putInPlace() {
    ::fsync(m_lock.get());
    const zip::FileDescriptor lock = lockData();
    const std::string ready = dataFolder() + '/' + std::string(complete) + m_language;
    if (fs::exists(ready))
        clear(ready);
    fs::rename(hostPath(), ready);
    placeFrom(ready, m_language);
}

void StagedLanguage::remove() {
    if (!m_lock.isOpen())
        return;
    std::error_code ignored; // the next start tries again
    fs::remove_all(hostPath(), ignored);
    m_lock = zip::FileDescriptor(-1);
}

std::string StagedLanguage::devicePath() const {
    return morphology::HunspellSearcher::defaultDir() + '/' + m_name;
}

std::string StagedLanguage::hostPath() const {
    return dataFolder() + '/' + m_name;
}

void StagedLanguage::clearLeftovers() {
    try {
        if (!fs::is_directory(dataFolder()))
            return;
        const zip::FileDescriptor lock = lockData();
        clearAll();
    } catch (const std::exception& error) {
        log::cb::warn(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
            return out << "Can not clear the morphology data: " << error.what();
        });
    }
}

} // namespace tessaly::services
