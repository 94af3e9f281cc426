#include "installed_dictionaries.h"

#include "sqlite.h"

#include <dictpmplugin/db/dbholder.h>
#include <dictpmplugin/db/dictionarydao.h>

#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <stdexcept>

namespace tessaly::benchmarks {

namespace {

constexpr const char* languages[] = {"cs", "de", "es", "fi", "fr", "it", "nl", "pl", "pt", "sv"};
constexpr int languageCount = int(std::size(languages));

const QString catalogueConnection = QStringLiteral("dictionary::DBHolder");

constexpr auto content = R"(
    BEGIN;
    CREATE TABLE metadata (key TEXT PRIMARY KEY, value TEXT NOT NULL);
    INSERT INTO metadata VALUES ('title', 'FreeDict Dictionary'), ('language_from', '%1'),
        ('language_to', 'en'), ('description', 'Some 500 headwords with their translations.'),
        ('category', 'Bilingual'), ('provider', 'FreeDict'), ('version', '203'), ('publish_date', '2018-08-04'),
        ('set', 'FreeDict'), ('thumbnail', 'http://127.0.0.1:8080/v1/dictionaries/1/cover.png');
    CREATE TABLE entries (headword TEXT NOT NULL, definition TEXT NOT NULL, folded TEXT NOT NULL);
    WITH RECURSIVE number(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM number WHERE n < 500)
        INSERT INTO entries SELECT 'Word ' || n, 'what word ' || n || ' means in English', 'word ' || n FROM number;
    CREATE INDEX entries_headword ON entries (headword);
    CREATE INDEX entries_folded ON entries (folded);
    COMMIT;)";

const char* languageOf(int number) {
    return languages[number % languageCount];
}

void writeFiles(const fixture::TestDevice& device) {
    for (int number = 0; number < installedCount; ++number) {
        const QString path = dictionaryPath(device, number);
        if (number >= languageCount) {
            QFile::copy(dictionaryPath(device, number % languageCount), path);
            continue;
        }
        const Database database = openDatabase(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        const QByteArray script = QByteArray(content).replace("%1", languageOf(number));
        if (sqlite3_exec(database.get(), script.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error("can not make a dictionary");
    }
}

void fillCatalogue(const fixture::TestDevice& device, int count) {
    std::vector<dictionary::DictionaryInfo> records(static_cast<std::size_t>(count));
    for (int number = 0; dictionary::DictionaryInfo & info : records) {
        info.serverId = number + 1;
        info.name = "FreeDict Dictionary";
        info.file = QFileInfo(dictionaryPath(device, number)).fileName().toStdString();
        info.languageFrom = utilities::Locale{languageOf(number), boost::none};
        info.languageTo = utilities::Locale{"en", boost::none};
        info.provider = "FreeDict";
        info.description = "Some 500 headwords with their translations.";
        ++number;
    }
    {
        const auto holder = dictionary::DBHolder::newDefault();
        if (dictionary::DictionaryDAO(QSqlDatabase::database(catalogueConnection))
                .addMultiple(records)
                .isLeft())
            throw std::runtime_error("can not fill the catalogue");
    }
    QSqlDatabase::removeDatabase(catalogueConnection);
}

} // namespace

QString dictionaryPath(const fixture::TestDevice& device, int number) {
    return device.path("/mnt/ext1/system/dictionaries/%1.tsdict").arg(number, 3, 10, QLatin1Char('0'));
}

void installDictionaries(const fixture::TestDevice& device, int cataloguedCount) {
    writeFiles(device);
    fillCatalogue(device, cataloguedCount);
}

} // namespace tessaly::benchmarks
