#include "packages/dictionary_converter.h"

#include "dictd/dictd_dictionary.h"
#include "support/files.h"

#include <QDataStream>
#include <QSaveFile>
#include <QScopeGuard>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

namespace tessaly::server {

namespace {

// To be raised whenever the layout of the file changes.
constexpr QLatin1String layout("2");

void run(QSqlQuery& query, const QString& statement = {}) {
    if (!(statement.isEmpty() ? query.exec() : query.exec(statement)))
        throw Failure(QStringLiteral("cannot write the dictionary: %1").arg(query.lastError().text()));
}

/// The index has headwords in lower case; the entry starts with the headword as it should be.
QString properHeadword(const QString& indexed, const QString& text) {
    const QString start = text.left(indexed.size());
    const bool same = start.toCaseFolded() == indexed.toCaseFolded();
    const bool ends = text.size() == start.size() || !text.at(start.size()).isLetterOrNumber();
    return same && ends ? start : indexed;
}

void writeMetadata(QSqlDatabase& database, const DictionaryRecord& record) {
    QSqlQuery query(database);
    run(query, QStringLiteral("CREATE TABLE metadata (key TEXT PRIMARY KEY, value TEXT NOT NULL)"));
    query.prepare(QStringLiteral("INSERT INTO metadata VALUES (?, ?)"));
    const QList<std::pair<QString, QString>> values = {
        {QStringLiteral("title"), record.name},
        {QStringLiteral("language_from"), record.languageFrom},
        {QStringLiteral("language_to"), record.languageTo},
        {QStringLiteral("description"), record.description},
        {QStringLiteral("category"), record.category},
        {QStringLiteral("provider"), record.provider},
        {QStringLiteral("version"), QString::number(record.version)},
        {QStringLiteral("publish_date"), record.publishDate},
        {QStringLiteral("set"), record.set},
        {QStringLiteral("thumbnail"), record.thumbnail},
    };
    for (const auto& [key, value] : values) {
        query.bindValue(0, key);
        query.bindValue(1, value.isNull() ? QStringLiteral("") : value);
        run(query);
    }
}

void writeEntries(QSqlDatabase& database, const DictdDictionary& dictionary, const std::stop_token& stop) {
    QSqlQuery query(database);
    run(query, QStringLiteral("CREATE TABLE entries (headword TEXT NOT NULL, definition TEXT NOT NULL, "
                              "folded TEXT NOT NULL)"));
    query.prepare(QStringLiteral("INSERT INTO entries VALUES (?, ?, ?)"));
    for (const DictdEntry& entry : dictionary.entries()) {
        if (stop.stop_requested())
            throw Failure(QStringLiteral("stopped"));
        const QString definition = dictionary.text(entry).trimmed();
        const QString headword = properHeadword(QString::fromUtf8(entry.headword), definition);
        query.bindValue(0, headword);
        query.bindValue(1, definition);
        query.bindValue(2, headword.normalized(QString::NormalizationForm_C).toCaseFolded());
        run(query);
    }
    run(query, QStringLiteral("CREATE INDEX entries_headword ON entries (headword)"));
    run(query, QStringLiteral("CREATE INDEX entries_folded ON entries (folded)"));
}

void writeDatabase(const QString& path, const DictionaryRecord& record, const std::stop_token& stop) {
    const DictdDictionary dictionary(record.indexPath);
    const QString connection = QUuid::createUuid().toString();
    const auto forget = qScopeGuard([&connection] { QSqlDatabase::removeDatabase(connection); });
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    database.setDatabaseName(path);
    if (!database.open())
        throw Failure(QStringLiteral("cannot create %1: %2").arg(path, database.lastError().text()));
    // The file has another name until it is whole, so nothing is ever rolled back.
    QSqlQuery query(database);
    run(query, QStringLiteral("PRAGMA journal_mode = OFF"));
    run(query, QStringLiteral("BEGIN"));
    writeMetadata(database, record);
    writeEntries(database, dictionary, stop);
    run(query, QStringLiteral("COMMIT"));
}

} // namespace

QString convertedName(const DictionaryRecord& record) {
    return fingerprint({layout, record.indexPath, record.sourceStamp, record.name, record.thumbnail,
                        record.description, record.category});
}

void convertDictionary(const DictionaryRecord& record, const QString& path, const std::stop_token& stop) {
    QFile database(path + QStringLiteral(".part"));
    database.remove(); // a leftover of a process that was killed
    const auto clearUp = qScopeGuard([&database] { database.remove(); });
    writeDatabase(database.fileName(), record, stop);
    QSaveFile file(path);
    if (!database.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly))
        throw Failure("write", file);
    const Compressed content = compress(database, file, stop);
    // What says how to read the data comes last, where its length needn't be known beforehand.
    QDataStream stream(&file);
    stream << content.crc << content.size << content.packedSize << content.sha256;
    if (!file.commit())
        throw Failure("write", file);
}

ConvertedDictionary::ConvertedDictionary(const QString& path)
    : m_file(path) {
    constexpr qint64 trailerSize = 4 + 8 + 8 + 4 + 64;
    QDataStream stream(&m_file);
    if (m_file.open(QIODevice::ReadOnly) && m_file.seek(m_file.size() - trailerSize))
        stream >> m_content.crc >> m_content.size >> m_content.packedSize >> m_content.sha256;
    if (m_content.packedSize != m_file.size() - trailerSize || !m_file.seek(0))
        throw Failure("read", m_file);
}

} // namespace tessaly::server
