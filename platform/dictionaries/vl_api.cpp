#include <dictionaries/vl_api.h>

#include <base/device_root.h>
#include <common_utilities/log_line.h>
#include <vellum/dictionary_files.h>

#include <dirent.h>
#include <memory>
#include <set>
#include <sys/stat.h>

namespace tessaly::vl_api {

namespace {

/// Names of the dictionary files in a folder, in byte order; none if it is absent or can't be read.
std::set<std::string> dictionaryFilesIn(const std::string& folder) {
    std::set<std::string> files;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(base::hostPath(folder).c_str()),
                                                        ::closedir);
    while (const dirent* const entry = directory ? ::readdir(directory.get()) : nullptr) {
        // The status follows links: a dangling one, or one to a folder, is no dictionary.
        struct stat status {};
        const auto isFile = [&] {
            return entry->d_type == DT_REG ||
                   (::fstatat(::dirfd(directory.get()), entry->d_name, &status, 0) == 0 &&
                    S_ISREG(status.st_mode));
        };
        if (vellum::isDictionaryFileName(entry->d_name) && isFile())
            files.insert(entry->d_name);
    }
    return files;
}

} // namespace

bool DictionariesBimap::insert(const Dictionary& dictionary) {
    if (m_byFile.contains(dictionary.file) ||
        !m_byName.emplace(dictionary.name, m_dictionaries.size()).second)
        return false;
    m_byFile.emplace(dictionary.file, m_dictionaries.size());
    m_dictionaries.push_back(dictionary);
    return true;
}

const Dictionary* DictionariesBimap::findByName(const std::string& name) const {
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : &m_dictionaries[found->second];
}

const Dictionary* DictionariesBimap::findByFileName(const std::string& file) const {
    const auto found = m_byFile.find(file);
    return found == m_byFile.end() ? nullptr : &m_dictionaries[found->second];
}

DictionariesBimap enumDictionaries() {
    DictionariesBimap dictionaries;
    for (const std::string_view folder : vellum::dictionaryFolders) {
        for (const std::string& file : dictionaryFilesIn(std::string(folder))) {
            const Dictionary dictionary{file.substr(0, file.size() - vellum::dictionarySuffix.size()), file,
                                        std::string(folder)};
            if (dictionaries.insert(dictionary))
                continue;
            LogLine(log::cb::warn) << dictionary.absolutePath()
                                   << " is left out: " << dictionaries.findByFileName(file)->absolutePath()
                                   << " has the same name";
        }
    }
    return dictionaries;
}

} // namespace tessaly::vl_api
