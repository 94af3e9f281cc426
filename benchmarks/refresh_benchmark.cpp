#include "benchmarks.h"
#include "compare.h"
#include "installed_dictionaries.h"
#include "sqlite.h"

#include <dictpmplugin/dictionarieslistmodel.h>
#include <simulator/fixture/test_device.h>

#include <QSqlDatabase>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tessaly::benchmarks {

namespace {

constexpr int rounds = 15;
constexpr int cataloguedCount = 250;

const QString connectionName = QStringLiteral("dictionary::DBHolder");

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

} // namespace

Measurement measureRefresh500() {
    const fixture::TestDevice device;
    installDictionaries(device, cataloguedCount);
    auto model = std::make_unique<dictionary::DictionariesListModel>();
    const auto check = [](bool isAsExpected) {
        if (!isAsExpected)
            throw std::runtime_error("not everything was read");
    };
    const Measurement result = compareFastest(
        "refresh 500", rounds,
        [&] {
            model->refreshData();
            check(model->getCount() == installedCount && model->getVersion(499) == u"203");
        },
        [&] {
            for (int number = cataloguedCount; number < installedCount; ++number)
                check(readMetadata(dictionaryPath(device, number)) == 10);
        });
    model.reset();
    QSqlDatabase::removeDatabase(connectionName);
    return result;
}

} // namespace tessaly::benchmarks
