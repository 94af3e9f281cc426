#pragma once

#include <dictionaries/dictionary_info.h>

#include <QMap>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace tessaly::tests {

constexpr auto dictionaryFolder = "/mnt/ext1/system/dictionaries/";

/// The model's connection to its catalogue, to be looked into and, once the model is gone, removed.
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
        QSqlQuery query(db);
        query.exec(QStringLiteral("CREATE TABLE metadata (key TEXT PRIMARY KEY, value TEXT NOT NULL)"));
        query.exec(QStringLiteral("CREATE TABLE entries (headword TEXT, definition TEXT, folded TEXT)"));
        query.prepare(QStringLiteral("INSERT INTO metadata VALUES (?, ?)"));
        for (auto value = metadata.begin(); value != metadata.end(); ++value) {
            query.bindValue(0, value.key());
            query.bindValue(1, value.value());
            query.exec();
        }
    }
    QSqlDatabase::removeDatabase(name);
}

} // namespace tessaly::tests
