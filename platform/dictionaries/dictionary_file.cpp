#include <dictionaries/dictionary_file.h>

#include "sqlite_reader.h"
#include "web_address.h"

#include <QString>
#include <base/device_root.h>
#include <base/log.h>
#include <charconv>
#include <map>
#include <ostream>
#include <utilities/locale_parser.h>

namespace tessaly::dictionary {

namespace {

using Rows = std::vector<SqliteReader::Row>;

// Whatever the keys are: picking them out by the statement takes longer than all the rest of opening a file.
constexpr auto metadataStatement = "SELECT key, value FROM metadata LIMIT 1000";

/// The metadata texts by key; of a repeated key the first.
std::map<std::string, std::string> textsFrom(const Rows& rows) {
    std::map<std::string, std::string> texts;
    for (const SqliteReader::Row& row : rows)
        texts.emplace(row[0], row[1]);
    return texts;
}

boost::optional<utilities::Locale> languageFrom(const std::string& code) {
    const auto locale = utilities::locale_parser::tagged_parse(code, '_');
    return code.empty() ? boost::none : locale.right();
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

Metadata metadataFrom(std::map<std::string, std::string> texts) {
    const std::string& thumbnail = texts["thumbnail"];
    return {texts["title"],
            languageFrom(texts["language_from"]),
            languageFrom(texts["language_to"]),
            texts["description"],
            texts["category"],
            texts["provider"],
            texts["publish_date"],
            texts["set"],
            isWebAddress(thumbnail) ? thumbnail : std::string(),
            numberFrom(texts["version"])};
}

} // namespace

struct DictionaryFile::Database {
    std::shared_ptr<SqliteReader> reader;

    /// The entries whose `column`, an indexed one, is `text`.
    [[nodiscard]] Rows entriesBy(const std::string& column, const std::string& text) const {
        const auto rows = reader->rows(
            "SELECT headword, definition FROM entries WHERE " + column + " = ?1 LIMIT 1000", {text});
        if (rows.isRight())
            return rows.getRight();
        log::cb::warn(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
            return out << "Failed to look up a word: " << rows.getLeft();
        });
        return {};
    }
};

std::vector<Entry> DictionaryFile::lookup(const std::string& word) const {
    Rows rows = m_database->entriesBy("headword", word);
    if (rows.empty())
        rows = m_database->entriesBy("folded", foldedForm(word));
    std::vector<Entry> entries;
    for (const SqliteReader::Row& row : rows)
        entries.push_back({row[0], row[1]});
    return entries;
}

Either<Error, DictionaryFile> open(const std::string& path) {
    const std::string hostPath = base::hostPath(path);
    const auto reader = SqliteReader::open(hostPath);
    if (reader.isLeft())
        return Left<Error>(reader.getLeft());
    SqliteReader& database = *reader.getRight();

    // Tables with a page of their own: views and virtual tables are code of somebody else's.
    const auto tables =
        database.rows("SELECT count(*) FROM sqlite_schema WHERE type = 'table' AND rootpage > 0 "
                      "AND name IN ('metadata', 'entries')");
    if (tables.isLeft())
        return Left<Error>(tables.getLeft());
    if (tables.getRight() != Rows{{"2"}})
        return Left<Error>({{{hostPath, -1, "not a dictionary"}}});
    const auto entries = database.rows("SELECT headword, definition, folded FROM entries LIMIT 1");
    if (entries.isLeft())
        return Left<Error>(entries.getLeft());
    const auto metadata = database.rows(metadataStatement);
    if (metadata.isLeft())
        return Left<Error>(metadata.getLeft());

    DictionaryFile file;
    file.m_database = std::make_shared<DictionaryFile::Database>(DictionaryFile::Database{reader.getRight()});
    if (!metadata.getRight().empty())
        file.m_metadata = metadataFrom(textsFrom(metadata.getRight()));
    return Right<DictionaryFile>(file);
}

} // namespace tessaly::dictionary
