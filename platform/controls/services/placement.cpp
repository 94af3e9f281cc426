#include "placement.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>
#include <zip/file_descriptor.h>

namespace tessaly::services {

namespace {

namespace fs = std::filesystem;

/// The paths of one of the two files.
struct File {
    File(const fs::path& ready, const std::string& name)
        : fresh(ready / name)
        , older(ready / ("older " + name))
        , target(ready.parent_path() / name) {}

    fs::path fresh;  ///< as it came; exists until it is in place
    fs::path older;  ///< what was in place before
    fs::path target; ///< its place
};

bool isThere(const fs::path& path) {
    return fs::exists(fs::symlink_status(path));
}

void setAside(const File& file) {
    if (!isThere(file.target))
        return;
    if (fs::is_directory(fs::symlink_status(file.target)))
        throw std::runtime_error(file.target.string() + " is a folder");
    fs::rename(file.target, file.older);
}

void place(const File& rules, const File& words) {
    setAside(rules);
    if (isThere(words.fresh)) { // else it is in place already
        setAside(words);
        fs::rename(words.fresh, words.target);
    }
    fs::rename(rules.fresh, rules.target);
}

void takeBack(const File& rules, const File& words) {
    if (!isThere(words.fresh))
        fs::rename(words.target, words.fresh);
    if (isThere(words.older))
        fs::rename(words.older, words.target);
    if (isThere(rules.older))
        fs::rename(rules.older, rules.target);
}

void syncFolder(const fs::path& path) {
    const zip::FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen())
        ::fsync(folder.get());
}

} // namespace

void placeFrom(const std::string& readyFolder, const std::string& language) {
    const fs::path ready(readyFolder);
    const File rules(ready, language + ".aff");
    const File words(ready, language + ".dic");
    const auto discard = [&] {
        fs::remove(rules.fresh); // first: without it nothing is left to be finished
        fs::remove_all(ready);
    };
    if (isThere(rules.fresh)) {
        try {
            place(rules, words);
        } catch (...) {
            takeBack(rules, words);
            discard();
            throw;
        }
        syncFolder(ready.parent_path());
    }
    discard();
}

} // namespace tessaly::services
