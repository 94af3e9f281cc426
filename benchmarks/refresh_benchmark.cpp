#include "refresh_benchmark.h"

#include "compare.h"

#include <dictpmplugin/db/dictionarydao.h>
#include <dictpmplugin/dictionarieslistmodel.h>
#include <simulator/fixture/test_device.h>

#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace tessaly::benchmarks {

namespace {

constexpr int rounds = 15;
constexpr int catalogued = 250;
constexpr int uncatalogued = 250;

const QString connectionName = QStringLiteral("dictionary::DBHolder");

constexpr auto dictionaryContent = R"(
    BEGIN;
    CREATE TABLE metadata (key TEXT PRIMARY KEY, value TEXT NOT NULL);
    INSERT INTO metadata VALUES ('title', 'Czech-English FreeDict Dictionary'), ('language_from', 'cs'),
        ('language_to', 'en'), ('description', 'Some 500 headwords with their translations.'),
        ('category', 'Bilingual'), ('provider', 'FreeDict'), ('version', '203'), ('publish_date', '2018-08-04'),
        ('set', 'FreeDict'), ('thumbnail', 'http://127.0.0.1:8080/v1/dictionaries/1/cover.png');
    CREATE TABLE entries (headword TEXT NOT NULL, definition TEXT NOT NULL, folded TEXT NOT NULL);
    WITH RECURSIVE number(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM number WHERE n < 500)
        INSERT INTO entries SELECT 'Word ' || n, 'what word ' || n || ' means in English', 'word ' || n FROM number;
    CREATE INDEX entries_headword ON entries (headword);
    CREATE INDEX entries_folded ON entries (folded);
    COMMIT;)";

using Database = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;
using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

Database openDatabase(const QString& path, int flags) {
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(path.toUtf8().constData(), &database, flags, nullptr);
    Database owner(database, sqlite3_close);
    if (result != SQLITE_OK)
        throw std::runtime_error("can not open " + path.toStdString());
    return owner;
}

/// What somebody in a hurry would write: nothing is checked, nothing is guarded.
std::size_t readMetadata(const QString& path) {
    const Database database = openDatabase(path, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX);
    sqlite3_stmt* handle = nullptr;
    sqlite3_prepare_v2(database.get(), "SELECT key, value FROM metadata", -1, &handle, nullptr);
    const Statement statement(handle, sqlite3_finalize);
    std::vector<std::pair<std::string, std::string>> texts;
    const auto text = [handle](int column) {
        return reinterpret_cast<const char*>(sqlite3_column_text(handle, column));
    };
    while (sqlite3_step(handle) == SQLITE_ROW)
        texts.emplace_back(text(0), text(1));
    return texts.size();
}

QString dictionaryPath(const fixture::TestDevice& device, int number) {
    return device.path("/mnt/ext1/system/dictionaries/%1.tsdict").arg(number, 3, 10, QLatin1Char('0'));
}

/// Numbers from 0 on; those that the catalogue knows come first.
void installDictionaries(const fixture::TestDevice& device) {
    const QString first = dictionaryPath(device, 0);
    const Database database = openDatabase(first, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (sqlite3_exec(database.get(), dictionaryContent, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error("can not make a dictionary");
    for (int number = 1; number < catalogued + uncatalogued; ++number)
        QFile::copy(first, dictionaryPath(device, number));
}

void fillCatalogue(const fixture::TestDevice& device) {
    std::vector<dictionary::DictionaryInfo> records(catalogued);
    for (int number = 0; dictionary::DictionaryInfo & info : records) {
        info.serverId = number + 1;
        info.name = "Czech-English FreeDict Dictionary";
        info.file = QFileInfo(dictionaryPath(device, number++)).fileName().toStdString();
        info.languageFrom = utilities::Locale{"cs", boost::none};
        info.languageTo = utilities::Locale{"en", boost::none};
    }
    if (dictionary::DictionaryDAO(QSqlDatabase::database(connectionName)).addMultiple(records).isLeft())
        throw std::runtime_error("can not fill the catalogue");
}

} // namespace

Measurement measureRefresh500() {
    const fixture::TestDevice device;
    installDictionaries(device);
    auto model = std::make_unique<dictionary::DictionariesListModel>();
    fillCatalogue(device);
    const auto check = [](bool isAsExpected) {
        if (!isAsExpected)
            throw std::runtime_error("not everything was read");
    };
    const Measurement result = compareFastest(
        "refresh 500", rounds,
        [&] {
            model->refreshData();
            check(model->getCount() == catalogued + uncatalogued && model->getVersion(499) == u"203");
        },
        [&] {
            for (int number = catalogued; number < catalogued + uncatalogued; ++number)
                check(readMetadata(dictionaryPath(device, number)) == 10);
        });
    model.reset();
    QSqlDatabase::removeDatabase(connectionName);
    return result;
}

} // namespace tessaly::benchmarks
