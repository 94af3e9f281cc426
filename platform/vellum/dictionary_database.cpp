#include <vellum/dictionary_database.h>

#include <QByteArray>
#include <QString>
#include <QUtf8StringView>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <initializer_list>
#include <limits>
#include <sqlite3.h>
#include <stdexcept>
#include <sys/stat.h>

namespace vellum {

namespace {

constexpr int longestValue = 1 << 20;
constexpr int longestSql = 1000; // that of the schema included
constexpr std::size_t longestAnswer = 8 << 20;
constexpr std::size_t mostRows = 1000;
constexpr std::size_t longestMetadata = 256 << 10; // read of hundreds of files at every start
/// Of all databases of the process. Bounds the work of a single step of the machine as well: a key in an
/// index may be as long as its file, and is read whole for each comparison.
constexpr sqlite3_int64 mostMemory = 16 << 20;
/// Far more than a look through all of a large dictionary takes, and little enough for whoever waits for it.
constexpr double mostSeconds = 0.1;
/// Steps of SQLite's virtual machine, each of which may read a value, between two looks at the time.
constexpr int stepsAtOnce = 50;
/// Several times what a dictionary's schema needs; SQLite makes much more of each object than its text.
constexpr int looksAtSchema = 40;

double processorSeconds() {
    std::timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// Immutable: no journal is looked for or made, and a read-only folder serves.
std::string immutableUrl(const std::string& path) {
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

struct DictionaryDatabase::Connection {
    std::string path;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle{nullptr, sqlite3_close};
    double deadline = 0; ///< processor time of the calling thread
    int looksLeft = looksAtSchema;

    [[noreturn]] void fail(const std::string& what) const { throw std::runtime_error(path + ": " + what); }
    void require(bool success) const {
        if (!success)
            fail(std::string("cannot be read: ") + sqlite3_errmsg(handle.get()));
    }
    static int isLate(void* connection) {
        auto* const self = static_cast<Connection*>(connection);
        return --self->looksLeft < 0 || processorSeconds() > self->deadline ? 1 : 0;
    }
};

DictionaryDatabase::DictionaryDatabase(const std::string& hostPath)
    : m_connection(std::make_unique<Connection>()) {
    Connection& connection = *m_connection;
    connection.path = hostPath;
    // A pipe would block whoever opens it.
    struct stat status {};
    if (::stat(hostPath.c_str(), &status) != 0)
        connection.fail(std::strerror(errno));
    if (!S_ISREG(status.st_mode))
        connection.fail("not a file");

    sqlite3_hard_heap_limit64(mostMemory);
    sqlite3* handle = nullptr;
    const char* const withoutLocks = "unix-none"; // what never changes needs none
    const int opened =
        sqlite3_open_v2(immutableUrl(hostPath).c_str(), &handle,
                        SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, withoutLocks);
    connection.handle.reset(handle);
    connection.require(opened == SQLITE_OK);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_limit(handle, SQLITE_LIMIT_SQL_LENGTH, longestSql);
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    // A generated column computes within a single step, which no bound on time sees. So a schema may compare
    // and join texts, but call no function and nest nothing.
    sqlite3_limit(handle, SQLITE_LIMIT_FUNCTION_ARG, 0);
    sqlite3_limit(handle, SQLITE_LIMIT_EXPR_DEPTH, 2);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    connection.deadline = processorSeconds() + mostSeconds;
    sqlite3_progress_handler(handle, stepsAtOnce, Connection::isLate, &connection);

    // What the schema's rows say of themselves can be forged; here SQLite says what it takes them for. It
    // knows no column of a view, nor of a virtual table that nothing has used.
    const auto hasTable = [handle](const char* name, std::initializer_list<const char*> columns) {
        return std::all_of(columns.begin(), columns.end(), [&](const char* column) {
            return sqlite3_table_column_metadata(handle, "main", name, column, nullptr, nullptr, nullptr,
                                                 nullptr, nullptr) == SQLITE_OK;
        });
    };
    if (!hasTable("metadata", {"key", "value"}) || !hasTable("entries", {"headword", "definition", "folded"}))
        connection.fail("not a dictionary");
    connection.looksLeft = std::numeric_limits<int>::max();
    // Whatever the keys are: picking them out in the statement takes longer than all the rest of opening.
    m_metadata = run("SELECT key, value FROM metadata", {}, longestMetadata);
}

DictionaryDatabase::~DictionaryDatabase() = default;

std::vector<DictionaryDatabase::Row> DictionaryDatabase::rows(const std::string& statement,
                                                              const std::string& text) const {
    m_connection->deadline = processorSeconds() + mostSeconds;
    return run(statement, text, longestAnswer);
}

std::vector<DictionaryDatabase::Row>
DictionaryDatabase::run(const std::string& statement, const std::string& text, std::size_t longest) const {
    sqlite3_stmt* prepared = nullptr;
    const int result =
        sqlite3_prepare_v2(m_connection->handle.get(), statement.c_str(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(prepared, sqlite3_finalize);
    m_connection->require(result == SQLITE_OK);
    if (sqlite3_bind_parameter_count(prepared) > 0)
        m_connection->require(sqlite3_bind_text64(prepared, 1, text.data(), text.size(), SQLITE_STATIC,
                                                  SQLITE_UTF8) == SQLITE_OK);

    std::vector<Row> rows;
    const int columns = sqlite3_column_count(prepared);
    std::size_t length = 0;
    int state = sqlite3_step(prepared);
    for (; state == SQLITE_ROW && rows.size() < mostRows; state = sqlite3_step(prepared)) {
        Row row;
        row.reserve(std::size_t(columns));
        for (int i = 0; i < columns; ++i) {
            row.push_back(column(prepared, i));
            length += row.back().size();
        }
        if (length > longest)
            m_connection->fail("too much text");
        rows.push_back(std::move(row));
    }
    m_connection->require(state == SQLITE_DONE || state == SQLITE_ROW);
    return rows;
}

} // namespace vellum
