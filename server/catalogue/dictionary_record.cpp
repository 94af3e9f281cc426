#include "catalogue/dictionary_record.h"

namespace tessaly::server {

namespace {

QJsonValue languageToJson(const QString& code) {
    if (code.isEmpty())
        return QJsonValue::Null;
    return QJsonObject{{QStringLiteral("code"), code}};
}

} // namespace

QJsonObject DictionaryRecord::toJson() const {
    return {{QStringLiteral("id"), id},
            {QStringLiteral("name"), name},
            {QStringLiteral("file"), file},
            {QStringLiteral("version"), version},
            {QStringLiteral("language_from"), languageToJson(languageFrom)},
            {QStringLiteral("language_to"), languageToJson(languageTo)},
            {QStringLiteral("thumbnail"), thumbnail},
            {QStringLiteral("description"), description},
            {QStringLiteral("category"), category},
            {QStringLiteral("provider"), provider},
            {QStringLiteral("publish_date"), publishDate},
            {QStringLiteral("set"), set},
            {QStringLiteral("size"), size}};
}

} // namespace tessaly::server
