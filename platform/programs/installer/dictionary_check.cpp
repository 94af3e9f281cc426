#include "dictionary_check.h"

#include "failure.h"

#include <memory>
#include <sqlite3.h>
#include <string_view>

namespace tessaly::installer {

namespace {

/// Steps of SQLite's virtual machine; a real dictionary needs some dozens.
constexpr int maxSteps = 1'000'000;

/// Real tables only: a view or a virtual table could run anything that the file's author likes.
constexpr const char* countTables =
    "SELECT count(*) FROM sqlite_schema WHERE type = 'table' AND rootpage > 0 "
    "AND name IN ('metadata', 'entries')";
constexpr const char* readTables = "SELECT 1 FROM metadata LIMIT 1; SELECT 1 FROM entries LIMIT 1";

/// Refusing the row ends the query with an error.
int acceptTwo(void*, int, char** values, char**) {
    return std::string_view(values[0]) == "2" ? 0 : 1;
}

} // namespace

void requireDictionary(const std::string& path, const std::string& name) {
    sqlite3* handle = nullptr;
    const bool isOpen = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK;
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(handle, sqlite3_close);
    if (isOpen) {
        sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_progress_handler(
            handle, maxSteps, [](void*) { return 1; }, nullptr);
    }
    if (!isOpen || sqlite3_exec(handle, countTables, acceptTwo, nullptr, nullptr) != SQLITE_OK ||
        sqlite3_exec(handle, readTables, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw Failure(Code::NotADictionary,
                      "\"" + name + "\" is not a dictionary: " + sqlite3_errmsg(handle));
}

} // namespace tessaly::installer
