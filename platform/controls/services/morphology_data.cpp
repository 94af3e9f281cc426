#include "morphology_data.h"

#include <base/device_root.h>
#include <base/file.h>
#include <base/staging.h>
#include <cerrno>
#include <common_utilities/log_line.h>
#include <dictionaries/morph_explorer.h>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <sys/file.h>
#include <vector>
#include <zip/reader.h>

namespace tessaly::services {

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t largestFile = std::int64_t{64} << 20; // several times the largest there is
constexpr std::string_view complete = ".ready ";

void require(bool isSo, const std::string& otherwise) {
    if (!isSo)
        throw std::runtime_error(otherwise);
}

void unpackEntry(zip::Reader& archive, const std::string& name, const std::string& path) {
    const base::FileDescriptor file = base::openFile(path, O_CREAT | O_EXCL | O_WRONLY);
    std::int64_t room = largestFile;
    for (std::string_view piece; !(piece = archive.read()).empty();) {
        room -= std::int64_t(piece.size());
        require(room >= 0, name + " is too large");
        base::writeAll(file, piece);
    }
    require(room < largestFile, name + " is empty");
    base::syncToDisk(file);
}

/// While it lives, nobody else places anything.
base::FileDescriptor lockData(const std::string& directory) {
    base::FileDescriptor lock = base::openFile(directory, O_RDONLY | O_DIRECTORY);
    while (::flock(lock.get(), LOCK_EX) != 0) {
        if (errno != EINTR)
            base::throwSystemError("cannot lock " + directory);
    }
    return lock;
}

/// Moves the files from ".ready CODE" to their places, or those that a killed process has left to be moved. A
/// language is there when both files are: the rules go first and come last, so that those of one version
/// never stand beside the words of another.
void finish(const fs::path& ready) {
    const fs::path data = ready.parent_path();
    const std::string language = ready.filename().string().substr(complete.size());
    const std::string rules = language + ".aff";
    const std::string words = language + ".dic";
    if (fs::exists(ready / rules)) {
        fs::remove(data / rules);
        if (fs::exists(ready / words))
            fs::rename(ready / words, data / words);
        fs::rename(ready / rules, data / rules);
        base::syncToDisk(data);
    }
    fs::remove_all(ready);
}

} // namespace

void unpackLanguage(const std::string& archive, const std::string& language, const std::string& directory) {
    std::set<std::string> missing{language + ".aff", language + ".dic"};
    const auto reader = zip::Reader::open(archive);
    while (const auto entry = reader->next()) {
        require(missing.erase(entry->name) == 1, "the archive holds \"" + entry->name +
                                                     "\", which isn't of \"" + language +
                                                     "\" or is there twice");
        unpackEntry(*reader, entry->name, directory + '/' + entry->name);
    }
    require(missing.empty(), "the archive lacks a file of \"" + language + '"');
}

void placeLanguage(const std::string& stagingDirectory, const std::string& language) {
    const fs::path data = fs::path(stagingDirectory).parent_path();
    const fs::path ready = data / (std::string(complete) + language);
    base::syncToDisk(stagingDirectory);
    const base::FileDescriptor lock = lockData(data);
    for (const char* const suffix : {".aff", ".dic"}) // the one thing that a file can't replace
        require(!fs::is_directory(data / (language + suffix)), language + suffix + " is a directory");
    if (fs::exists(ready))
        finish(ready);
    fs::rename(stagingDirectory, ready);
    finish(ready);
}

void clearLeftovers() {
    const std::string data = base::hostPath(morphology::HunspellSearcher::defaultDir());
    try {
        if (!fs::is_directory(data))
            return;
        base::Staging::removeLeftovers(data, stagingPrefix);
        const base::FileDescriptor lock = lockData(data);
        // Collected first: what a directory lists while entries vanish from it is undefined.
        for (const fs::path& entry : std::vector<fs::path>(fs::directory_iterator(data), {})) {
            if (entry.filename().string().starts_with(complete))
                finish(entry);
        }
    } catch (const std::exception& error) {
        LogLine(log::cb::warn) << "Can not clear the morphology data: " << error.what();
    }
}

} // namespace tessaly::services
