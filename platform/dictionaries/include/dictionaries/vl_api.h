#pragma once

#include <dictionaries/export.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace tessaly::vl_api {

/// An installed dictionary, as enumerating finds it: no file is opened for it.
struct Dictionary {
    std::string name;      ///< the file's name without its ending, fit to be read
    std::string file;      ///< the file's name
    std::string directory; ///< device path of its folder

    [[nodiscard]] std::string absolutePath() const { return directory + '/' + file; }
};

/// Installed dictionaries by name and by file name, each once, in the order they were added. A plain value.
class TESSALY_DICTIONARIES_API DictionariesBimap {
public:
    using const_iterator = std::vector<Dictionary>::const_iterator;

    /// False, and nothing is added, when the name or the file name is there already.
    bool insert(const Dictionary& dictionary);

    /// Null when there is none; else valid until the next insert.
    [[nodiscard]] const Dictionary* findByName(const std::string& name) const;
    [[nodiscard]] const Dictionary* findByFileName(const std::string& file) const;

    [[nodiscard]] std::size_t size() const { return m_dictionaries.size(); }
    [[nodiscard]] bool empty() const { return m_dictionaries.empty(); }
    [[nodiscard]] const_iterator begin() const { return m_dictionaries.begin(); }
    [[nodiscard]] const_iterator end() const { return m_dictionaries.end(); }

private:
    std::vector<Dictionary> m_dictionaries;
    std::unordered_map<std::string, std::size_t> m_byName;
    std::unordered_map<std::string, std::size_t> m_byFile;
};

/// The dictionaries in the device's four folders: folder by folder, by file name within one. Of two files
/// with one name that of the first folder counts, and a warning is logged. Any thread.
TESSALY_DICTIONARIES_API DictionariesBimap enumDictionaries();

} // namespace tessaly::vl_api
