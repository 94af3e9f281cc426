#pragma once

#include <common_utilities/either.h>
#include <utilities/error.h>

#include <memory>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace tessaly::dictionary {

/// A database file from anywhere, damaged or hostile ones included: opened so that nothing is written, in it
/// or beside it, that nothing stored in it runs, and that time and memory of a statement are bounded. One
/// thread at a time.
class SqliteReader {
public:
    /// `path` is a host path.
    static Either<Error, std::shared_ptr<SqliteReader>> open(const std::string& path);

    SqliteReader(const SqliteReader&) = delete;
    SqliteReader& operator=(const SqliteReader&) = delete;

    /// A row's columns as UTF-8 texts; NULL is empty.
    using Row = std::vector<std::string>;
    /// All rows of a statement, with its placeholders bound to `texts`.
    [[nodiscard]] Either<Error, std::vector<Row>> rows(const std::string& statement,
                                                       const std::vector<std::string>& texts = {});

private:
    explicit SqliteReader(const std::string& path)
        : m_path(path) {}

    [[nodiscard]] Error lastError(const std::string& what) const;

    static int countSteps(void* reader);

    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };
    std::string m_path;
    std::unique_ptr<sqlite3, Close> m_database;
    int m_stepsLeft = 0;
};

} // namespace tessaly::dictionary
