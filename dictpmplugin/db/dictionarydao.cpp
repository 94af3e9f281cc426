#include "dictionarydao.h"

#include "write_ahead.h"

#include <dictpmplugin/LangUtils.h>
#include <utilities/locale.h>

#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>
#include <utility>

namespace tessaly::dictionary {

namespace {

using OptionalLocale = boost::optional<utilities::Locale>;

Left<DAOError> failure(const QString& message, const QSqlQuery& query) {
    return Left<DAOError>(DAOError(message, query.lastError()));
}

QVariant text(const std::string& value) {
    return QString::fromStdString(value);
}

/// An unknown language has no display text, but keeps its code.
QVariant languageName(const OptionalLocale& locale) {
    return text(langutils::displayTextOr(locale, ""));
}

QVariant languageCode(const OptionalLocale& locale) {
    return text(locale ? locale->stringify('_') : "");
}

/// The positions of the columns, looked up once for all rows.
struct Columns {
    explicit Columns(const QSqlRecord& record)
        : id(record.indexOf(QStringLiteral("id")))
        , serverId(record.indexOf(QStringLiteral("dicts_id")))
        , name(record.indexOf(QStringLiteral("name")))
        , file(record.indexOf(QStringLiteral("file")))
        , version(record.indexOf(QStringLiteral("version")))
        , languageFrom(record.indexOf(QStringLiteral("lang_iso_from")))
        , languageTo(record.indexOf(QStringLiteral("lang_iso_to")))
        , thumbnail(record.indexOf(QStringLiteral("thumbnail")))
        , description(record.indexOf(QStringLiteral("description")))
        , category(record.indexOf(QStringLiteral("category")))
        , provider(record.indexOf(QStringLiteral("provider"))) {}

    int id, serverId, name, file, version, languageFrom, languageTo, thumbnail, description, category,
        provider;
};

DictionaryInfo recordOf(const QSqlQuery& row, const Columns& columns) {
    const auto string = [&row](int column) { return row.value(column).toString().toStdString(); };
    const auto locale = [&string](int column) {
        return utilities::locale_parser::tagged_parse(string(column), '_').unwrap();
    };
    DictionaryInfo info;
    info.databaseId = row.value(columns.id).toInt();
    info.serverId = row.value(columns.serverId).toInt();
    info.name = string(columns.name);
    info.file = string(columns.file);
    info.version = row.value(columns.version).toInt();
    info.languageFrom = locale(columns.languageFrom);
    info.languageTo = locale(columns.languageTo);
    info.thumbnail = string(columns.thumbnail);
    info.description = string(columns.description);
    info.category = string(columns.category);
    info.provider = string(columns.provider);
    info.dictSet = info.description; // on purpose: the column dict_set is written but never read back
    return info;
}

} // namespace

DictionaryDAO::DictionaryDAO(const QSqlDatabase& db)
    : m_db(db) {}

QString DictionaryDAO::listStatement() {
    return QStringLiteral("SELECT id, dicts_id, name, file, lang_from, lang_iso_from, lang_to, lang_iso_to, "
                          "thumbnail, description, category, provider, dict_set, version FROM Dictionaries;");
}

Either<DAOError, std::vector<DictionaryInfo>> DictionaryDAO::list() const {
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    if (!query.exec(listStatement()))
        return failure(QStringLiteral("error while listing dictionaries"), query);

    const Columns columns(query.record());
    std::vector<DictionaryInfo> result;
    while (query.next())
        result.push_back(recordOf(query, columns));
    // Damage deep in the file shows only while stepping; half a catalogue must not pass for the whole.
    if (query.lastError().isValid())
        return failure(QStringLiteral("error while listing dictionaries"), query);
    return Right<std::vector<DictionaryInfo>>(std::move(result));
}

Either<DAOError, void> DictionaryDAO::addMultiple(const std::vector<DictionaryInfo>& items) const {
    const WriteAhead writeAhead(m_db);
    QSqlQuery query(m_db);
    if (!query.prepare(
            QStringLiteral("INSERT INTO Dictionaries (dicts_id, name, file, lang_from, lang_iso_from, "
                           "lang_to, lang_iso_to, thumbnail, description, category, provider, dict_set, "
                           "version) VALUES (:dicts_id, :name, :file, :lang_from, :lang_iso_from, "
                           ":lang_to, :lang_iso_to, :thumbnail, :description, :category, :provider, "
                           ":dict_set, :version);")))
        return failure(QStringLiteral("error while preparing adding dictionaries"), query);

    for (const DictionaryInfo& item : items) {
        query.bindValue(QStringLiteral(":dicts_id"), item.serverId);
        query.bindValue(QStringLiteral(":name"), text(item.name));
        query.bindValue(QStringLiteral(":file"), text(item.file));
        query.bindValue(QStringLiteral(":lang_from"), languageName(item.languageFrom));
        query.bindValue(QStringLiteral(":lang_iso_from"), languageCode(item.languageFrom));
        query.bindValue(QStringLiteral(":lang_to"), languageName(item.languageTo));
        query.bindValue(QStringLiteral(":lang_iso_to"), languageCode(item.languageTo));
        query.bindValue(QStringLiteral(":thumbnail"), text(item.thumbnail));
        query.bindValue(QStringLiteral(":description"), text(item.description));
        query.bindValue(QStringLiteral(":category"), text(item.category));
        query.bindValue(QStringLiteral(":provider"), text(item.provider));
        query.bindValue(QStringLiteral(":dict_set"), text(item.dictSet));
        query.bindValue(QStringLiteral(":version"), item.version);
        if (!query.exec())
            return failure(QStringLiteral("error while adding dictionaries"), query);
    }
    return {};
}

Either<DAOError, void> DictionaryDAO::deleteAll() const {
    QSqlQuery query(m_db);
    if (!query.exec(QStringLiteral("DELETE FROM Dictionaries;")))
        return failure(QStringLiteral("error while deleting all dictionaries"), query);
    return {};
}

} // namespace tessaly::dictionary
