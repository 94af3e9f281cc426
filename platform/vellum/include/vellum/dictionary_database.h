#pragma once

#include <vellum/export.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace vellum {

/// The database in a dictionary file from anywhere, damaged and hostile ones included. Opening it is the one
/// check whether a file is a dictionary:
///
///     const vellum::DictionaryDatabase database(hostPath); // throws if it isn't one
///     const auto rows = database.rows("SELECT definition FROM entries WHERE headword = ?1", "word");
///
/// A dictionary has plain tables `metadata` (key, value) and `entries` (headword, definition, folded). Views
/// and virtual tables in their place are refused: they are somebody else's code, as is a schema of hundreds
/// of objects, with a statement of more than 1000 bytes, or with an expression that calls a function or has
/// another one within: a generated column would compute it. Nothing is written, in the file or beside it,
/// nothing stored in it runs, and opening as well as each statement is bounded in processor time (a tenth of
/// a second), rows (the first thousand), text (8 MiB, of metadata 256 KiB), the length of a value (1 MiB) and
/// memory: all of SQLite in the process gets 16 MiB from now on. Failures are thrown as std::runtime_error.
/// One thread at a time.
class TESSALY_VELLUM_API DictionaryDatabase {
public:
    explicit DictionaryDatabase(const std::string& hostPath);
    ~DictionaryDatabase();
    DictionaryDatabase(const DictionaryDatabase&) = delete;
    DictionaryDatabase& operator=(const DictionaryDatabase&) = delete;

    /// A row's columns as UTF-8; NULL is empty, and bytes that aren't UTF-8 are replaced.
    using Row = std::vector<std::string>;
    /// What the file says of itself: keys and values.
    [[nodiscard]] const std::vector<Row>& metadata() const { return m_metadata; }

    /// The rows of a statement whose placeholder, if it has one, is bound to `text`.
    [[nodiscard]] std::vector<Row> rows(const std::string& statement, const std::string& text = {}) const;

private:
    [[nodiscard]] std::vector<Row> run(const std::string& statement, const std::string& text,
                                       std::size_t longest) const;

    struct Connection;
    std::unique_ptr<Connection> m_connection;
    std::vector<Row> m_metadata;
};

} // namespace vellum
