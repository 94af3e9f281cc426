#pragma once

#include <QSqlDatabase>

namespace tessaly::dictionary {

/// While it lives, what each statement writes is appended to a write-ahead log, which costs no disk flush
/// however many they are. With its end everything moves into the database file itself, and the log is gone:
///
///     const WriteAhead writeAhead(db);
///     ... // many statements, each for itself
///
/// A killed process loses nothing: whoever opens the file next finds the log. Nothing changes where there can
/// be no log (in memory, read-only). Make it before the queries of its scope; no SELECT may be active at
/// either end. The thread that uses the connection.
class WriteAhead {
public:
    explicit WriteAhead(const QSqlDatabase& db);
    ~WriteAhead();
    WriteAhead(const WriteAhead&) = delete;
    WriteAhead& operator=(const WriteAhead&) = delete;

private:
    const QSqlDatabase m_db;
};

} // namespace tessaly::dictionary
