#include "control/catalogue_faults.h"

#include "catalogue/catalogue.h"
#include "control/switches.h"

#include <QJsonDocument>

namespace tessaly::server {

namespace {

constexpr qsizetype oversize = 48 << 20;

QJsonArray listed(const Catalogue& catalogue, const QSet<int>& unlisted) {
    QJsonArray array;
    for (const DictionaryRecord& record : catalogue.records()) {
        if (!unlisted.contains(record.id))
            array << record.toJson();
    }
    return array;
}

/// A sound record of a dictionary that can't be had, in a language that devices don't know.
QJsonObject inLanguage(const QString& code, int id) {
    DictionaryRecord record;
    record.id = id;
    record.name = QStringLiteral("Unknown language %1").arg(code);
    record.file = QStringLiteral("Unknown %1.tsdict").arg(id);
    record.languageFrom = code;
    record.languageTo = QStringLiteral("en");
    record.category = QStringLiteral("General");
    return record.toJson();
}

QByteArray compact(const QJsonArray& array) {
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

} // namespace

QByteArray catalogueBody(const Catalogue& catalogue, const Switches& switches) {
    QJsonArray array = listed(catalogue, switches.unlisted);
    const QString& mode = switches.catalogue;
    if (mode == u"malformed")
        return compact(array).chopped(5);
    if (mode == u"wrong_type")
        return QJsonDocument(QJsonObject{{QStringLiteral("dictionaries"), array}}).toJson();
    if (mode == u"wrong_records")
        return R"([1, "two", null, [3]])";
    if (mode == u"oversized")
        return QByteArray(oversize, ' ').append(compact(array));
    if (mode == u"bad_record") {
        const QJsonObject bad{{QStringLiteral("id"), QStringLiteral("twelve")},
                              {QStringLiteral("name"), QJsonValue::Null},
                              {QStringLiteral("file"), QStringLiteral("../escape.tsdict")}};
        array.insert(array.size() / 2, bad);
    } else if (mode == u"extra_languages") {
        array << inLanguage(QStringLiteral("xx"), 900001) << inLanguage(QStringLiteral("e!"), 900002);
    }
    return compact(array);
}

} // namespace tessaly::server
