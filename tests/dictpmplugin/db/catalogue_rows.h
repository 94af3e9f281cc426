#pragma once

#include <dictionaries/dictionary_info.h>

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QVariant>
#include <csignal>
#include <sqlite3.h>

namespace tessaly::tests {

/// The connection to the device's catalogue, to be looked into and, once its user is gone, removed.
inline const QString catalogueConnection = QStringLiteral("dictionary::DBHolder");

/// A record whose title is "NUMBER" and whose file is "NUMBER.tsdict".
inline dictionary::DictionaryInfo makeRecord(int serverId, const char* from = "en", const char* to = "de") {
    dictionary::DictionaryInfo info;
    info.serverId = serverId;
    info.name = std::to_string(serverId);
    info.file = info.name + ".tsdict";
    info.languageFrom = utilities::Locale{from, boost::none};
    info.languageTo = utilities::Locale{to, boost::none};
    return info;
}

/// Numbered from 1 on.
inline std::vector<dictionary::DictionaryInfo> makeRecords(int count) {
    std::vector<dictionary::DictionaryInfo> records;
    for (int id = 1; id <= count; ++id)
        records.push_back(makeRecord(id));
    return records;
}

/// What a statement finds, a row each, with '|' between columns and "NULL" for what is one.
inline QStringList rows(const QSqlDatabase& db, const QString& statement) {
    QSqlQuery query(db);
    QStringList result;
    for (query.exec(statement); query.next();) {
        QStringList columns;
        for (int i = 0; i < query.record().count(); ++i)
            columns << (query.isNull(i) ? QStringLiteral("NULL") : query.value(i).toString());
        result << columns.join(u'|');
    }
    return result;
}

/// An empty database, which takes the place of the one before.
inline QSqlDatabase openInMemory() {
    const QString connection = QStringLiteral("memory");
    QSqlDatabase::removeDatabase(connection);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    db.setDatabaseName(QStringLiteral(":memory:"));
    db.open();
    return db;
}

/// Kills the process in the middle of a later write: the first, the second, ...
inline void killInWrite(const QSqlDatabase& db, int number) {
    static int left = 0;
    left = number;
    sqlite3_commit_hook(
        *static_cast<sqlite3* const*>(db.driver()->handle().constData()),
        [](void*) { return --left == 0 ? ::raise(SIGKILL) : 0; }, nullptr);
}

} // namespace tessaly::tests
