#include <dictionaries/dictionary_file.h>

#include "text_bounds.h"

#include <QString>
#include <algorithm>
#include <base/device_root.h>
#include <charconv>
#include <common_utilities/log_line.h>
#include <filesystem>
#include <stdexcept>
#include <utilities/locale.h>
#include <utilities/url.h>
#include <vellum/dictionary_database.h>

namespace tessaly::dictionary {

namespace {

using vellum::DictionaryDatabase;
using Rows = std::vector<DictionaryDatabase::Row>;

/// The metadata text of a key: the first if it is repeated, empty if it isn't there.
const std::string& textOf(const Rows& rows, std::string_view key) {
    static const std::string none;
    const auto found =
        std::find_if(rows.begin(), rows.end(), [key](const auto& row) { return row[0] == key; });
    return found == rows.end() ? none : (*found)[1];
}

boost::optional<utilities::Locale> languageFrom(const std::string& code) {
    return code.empty() ? boost::none : utilities::locale_parser::tagged_parse(code, '_').right();
}

std::int32_t numberFrom(const std::string& text) {
    std::int32_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size() ? number : 0;
}

/// The form in which files keep their headwords for looking up whatever the letter case.
std::string foldedForm(const std::string& word) {
    return QString::fromStdString(word).normalized(QString::NormalizationForm_C).toCaseFolded().toStdString();
}

Metadata metadataFrom(const Rows& rows) {
    const auto text = [&rows](const char* key, std::size_t longest = longestText) {
        const std::string& whole = textOf(rows, key);
        return whole.size() <= longest ? whole
                                       : cut(QString::fromStdString(whole), qsizetype(longest)).toStdString();
    };
    std::string thumbnail = textOf(rows, "thumbnail");
    if (thumbnail.size() > longestUrl || !utilities::isWebUrl(thumbnail))
        thumbnail.clear();
    return {text("title"),
            languageFrom(textOf(rows, "language_from")),
            languageFrom(textOf(rows, "language_to")),
            text("description", longestDescription),
            text("category"),
            text("provider"),
            text("publish_date"),
            text("set"),
            std::move(thumbnail),
            numberFrom(textOf(rows, "version"))};
}

} // namespace

std::vector<Entry> DictionaryFile::lookup(const std::string& word) const {
    std::vector<Entry> entries;
    try {
        const std::string statement = "SELECT headword, definition FROM entries WHERE ";
        Rows rows = m_database->rows(statement + "headword = ?1", word);
        if (rows.empty())
            rows = m_database->rows(statement + "folded = ?1", foldedForm(word));
        for (const DictionaryDatabase::Row& row : rows)
            entries.push_back({row[0], row[1]});
    } catch (const std::runtime_error& error) {
        LogLine(log::cb::warn) << "Failed to look up a word: " << error.what();
    }
    return entries;
}

Either<Error, DictionaryFile> open(const std::string& path) {
    try {
        DictionaryFile file;
        file.m_database = std::make_shared<DictionaryDatabase>(base::hostPath(path));
        if (!file.m_database->metadata().empty()) {
            file.m_metadata = metadataFrom(file.m_database->metadata());
            const bool hasLanguages = file.m_metadata->languageFrom && file.m_metadata->languageTo;
            if (!hasLanguages && file.m_metadata->category.empty()) // nothing else tells it from others
                file.m_metadata->category = std::filesystem::path(path).stem().string();
        }
        return Right<DictionaryFile>(std::move(file));
    } catch (const std::runtime_error& error) {
        return Left<Error>({{{path, -1, error.what()}}});
    }
}

} // namespace tessaly::dictionary
