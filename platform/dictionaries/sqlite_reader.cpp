#include "sqlite_reader.h"

#include <QByteArray>
#include <QString>
#include <QUtf8StringView>
#include <filesystem>

namespace tessaly::dictionary {

namespace {

constexpr int longestValue = 1 << 20;
constexpr std::size_t longestAnswer = 8 << 20;
/// A second or so of the database's virtual machine: far more than a look through a large dictionary takes.
constexpr int stepsAtOnce = 10'000;
constexpr int mostSteps = 5'000;

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

/// Immutable: no lock or journal is looked for or made, and a read-only folder serves.
std::string immutableAddress(const std::string& path) {
    return "file:" + QByteArray::fromStdString(path).toPercentEncoding("/").toStdString() + "?immutable=1";
}

std::string column(sqlite3_stmt* statement, int index) {
    const auto* const bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, index));
    if (!bytes)
        return {};
    const std::string text(bytes, std::size_t(sqlite3_column_bytes(statement, index)));
    return QUtf8StringView(text).isValidUtf8() ? text : QString::fromStdString(text).toStdString();
}

} // namespace

Either<Error, std::shared_ptr<SqliteReader>> SqliteReader::open(const std::string& path) {
    // A pipe would block whoever opens it.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return Left<Error>({{{path, -1, error ? error.message() : "not a file"}}});

    const std::shared_ptr<SqliteReader> reader(new SqliteReader(path));
    sqlite3* database = nullptr;
    const int opened = sqlite3_open_v2(immutableAddress(path).c_str(), &database,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    reader->m_database.reset(database);
    if (opened != SQLITE_OK)
        return Left<Error>(reader->lastError("can not be opened"));

    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_limit(database, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_progress_handler(database, stepsAtOnce, countSteps, reader.get());
    return Right<std::shared_ptr<SqliteReader>>(reader);
}

Either<Error, std::vector<SqliteReader::Row>> SqliteReader::rows(const std::string& statement,
                                                                 const std::vector<std::string>& texts) {
    m_stepsLeft = mostSteps;
    sqlite3_stmt* handle = nullptr;
    const int prepared = sqlite3_prepare_v2(m_database.get(), statement.c_str(), -1, &handle, nullptr);
    const Statement owner(handle);
    if (prepared != SQLITE_OK)
        return Left<Error>(lastError("can not be read"));
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (sqlite3_bind_text64(handle, int(i + 1), texts[i].data(), texts[i].size(), SQLITE_STATIC,
                                SQLITE_UTF8) != SQLITE_OK)
            return Left<Error>(lastError("can not be read"));
    }

    std::vector<Row> result;
    std::size_t length = 0;
    int state = sqlite3_step(handle);
    for (; state == SQLITE_ROW; state = sqlite3_step(handle)) {
        Row row;
        for (int i = 0; i < sqlite3_column_count(handle); ++i) {
            row.push_back(column(handle, i));
            length += row.back().size();
        }
        if (length > longestAnswer)
            return Left<Error>({{{m_path, -1, "too much text"}}});
        result.push_back(std::move(row));
    }
    if (state != SQLITE_DONE)
        return Left<Error>(lastError("can not be read"));
    return Right<std::vector<Row>>(result);
}

Error SqliteReader::lastError(const std::string& what) const {
    return {{{m_path, -1, what},
             {"SQLite", sqlite3_extended_errcode(m_database.get()), sqlite3_errmsg(m_database.get())}}};
}

int SqliteReader::countSteps(void* reader) {
    return --static_cast<SqliteReader*>(reader)->m_stepsLeft < 0 ? 1 : 0;
}

} // namespace tessaly::dictionary
