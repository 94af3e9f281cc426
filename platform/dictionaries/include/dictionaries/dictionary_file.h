#pragma once

#include <common_utilities/either.h>
#include <dictionaries/export.h>
#include <utilities/error.h>
#include <utilities/locale.h>

#include <boost/optional.hpp>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vellum {
class DictionaryDatabase;
}

namespace tessaly::dictionary {

/// What a dictionary file says of itself; texts it doesn't have are empty, languages that don't parse absent.
/// Texts longer than a screen can bear are cut.
struct Metadata {
    std::string title;
    boost::optional<utilities::Locale> languageFrom;
    boost::optional<utilities::Locale> languageTo;
    std::string description;
    std::string category; ///< of a file without languages that has none, its name
    std::string provider;
    std::string publishDate;
    std::string dictSet;
    std::string thumbnail;
    std::int32_t version = 0;
};

struct Entry {
    std::string headword;
    std::string definition;
};

/// An open dictionary file, read only:
///
///     const auto file = dictionary::open("/mnt/ext1/system/dictionaries/English-French.tsdict");
///     if (file.isRight())
///         for (const Entry& entry : file.getRight().lookup("word"))
///             show(entry.definition);
///
/// Opening and each lookup are bounded in time, whatever is in the file; a lookup that exceeds its bound is
/// logged and finds nothing. Copies share the file. One thread at a time.
class TESSALY_DICTIONARIES_API DictionaryFile {
public:
    /// Empty when the file has no metadata at all.
    [[nodiscard]] const boost::optional<Metadata>& metadata() const { return m_metadata; }

    /// The entries of a word: letter for letter if there are any, else those that differ in letter case only.
    [[nodiscard]] std::vector<Entry> lookup(const std::string& word) const;

private:
    friend TESSALY_DICTIONARIES_API Either<Error, DictionaryFile> open(const std::string& path);
    std::shared_ptr<vellum::DictionaryDatabase> m_database;
    boost::optional<Metadata> m_metadata;
};

/// Opens a dictionary by its device path and reads its metadata. Any thread.
TESSALY_DICTIONARIES_API Either<Error, DictionaryFile> open(const std::string& path);

} // namespace tessaly::dictionary
