#pragma once

#include "db/catalogue_rows.h"

#include <QMap>

namespace tessaly::tests {

constexpr auto dictionaryFolder = "/mnt/ext1/system/dictionaries/";

inline QMap<QString, QString> languages(const char* from, const char* to) {
    return {{QStringLiteral("language_from"), QString::fromUtf8(from)},
            {QStringLiteral("language_to"), QString::fromUtf8(to)},
            {QStringLiteral("category"), QStringLiteral("small")}};
}

/// A dictionary file as they are on a device, with these metadata and no entries.
inline void writeDictionary(const QString& path, const QMap<QString, QString>& metadata) {
    const auto name = QStringLiteral("a dictionary's file");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        db.open();
        rows(db, QStringLiteral("CREATE TABLE metadata (key TEXT PRIMARY KEY, value TEXT NOT NULL)"));
        rows(db, QStringLiteral("CREATE TABLE entries (headword TEXT, definition TEXT, folded TEXT)"));
        for (auto value = metadata.begin(); value != metadata.end(); ++value)
            rows(db, QStringLiteral("INSERT INTO metadata VALUES ('%1', '%2')").arg(value.key(), *value));
    }
    QSqlDatabase::removeDatabase(name);
}

} // namespace tessaly::tests
