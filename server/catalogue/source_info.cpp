#include "catalogue/source_info.h"

namespace tessaly::server {

QJsonObject SourceInfo::toJson() const {
    return {{QStringLiteral("index"), indexPath},
            {QStringLiteral("stamp"), stamp},
            {QStringLiteral("title"), info.title},
            {QStringLiteral("version"), info.version},
            {QStringLiteral("provider"), info.provider},
            {QStringLiteral("publish_date"), info.publishDate},
            {QStringLiteral("description"), info.description},
            {QStringLiteral("package_size"), packageSize},
            {QStringLiteral("error"), error}};
}

SourceInfo SourceInfo::fromJson(const QJsonObject& object) {
    const auto text = [&object](QLatin1String key) { return object.value(key).toString(); };
    SourceInfo source;
    source.indexPath = text(QLatin1String("index"));
    source.stamp = text(QLatin1String("stamp"));
    source.info.title = text(QLatin1String("title"));
    source.info.version = object.value(QLatin1String("version")).toInt(1);
    source.info.provider = text(QLatin1String("provider"));
    source.info.publishDate = text(QLatin1String("publish_date"));
    source.info.description = text(QLatin1String("description"));
    source.packageSize = object.value(QLatin1String("package_size")).toInteger();
    source.error = text(QLatin1String("error"));
    return source;
}

} // namespace tessaly::server
