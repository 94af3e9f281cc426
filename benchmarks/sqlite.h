#pragma once

#include <QString>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace tessaly::benchmarks {

using Database = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;
using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

/// Throws std::runtime_error.
inline Database openDatabase(const QString& path, int flags) {
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(path.toUtf8().constData(), &database, flags, nullptr);
    Database owner(database, sqlite3_close);
    if (result != SQLITE_OK)
        throw std::runtime_error("can not open " + path.toStdString());
    return owner;
}

} // namespace tessaly::benchmarks
