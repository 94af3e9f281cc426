#include "routes/service.h"
#include "support/files.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tessaly::server {

namespace {

/// The catalogue's JSON as the switches want it.
QByteArray catalogueBody(const Catalogue& catalogue, const Control& control) {
    QJsonArray array;
    for (const DictionaryRecord& record : catalogue.records()) {
        if (!control.isUnlisted(record.id))
            array << record.toJson();
    }
    const QString mode = control.mode(QLatin1String("catalogue"));
    if (mode == u"bad_record")
        array.insert(array.size() / 2,
                     QJsonObject{{QStringLiteral("id"), QStringLiteral("twelve")},
                                 {QStringLiteral("name"), QJsonValue::Null},
                                 {QStringLiteral("file"), QStringLiteral("../escape.tsdict")}});
    const QByteArray body = QJsonDocument(array).toJson(QJsonDocument::Compact);
    return mode == u"malformed" ? body.chopped(5) : body;
}

Response tagged(const char* contentType, const QByteArray& body) {
    Response response;
    response.contentType = contentType;
    response.body = body;
    response.tag = '"' + sha256(body).left(32) + '"';
    return response;
}

Response catalogueResponse(Service& service, const QString&, const QHttpServerRequest&) {
    if (const int status = service.control.status(QLatin1String("catalogue")))
        return Response::error(status, QStringLiteral("as the switch wants it"));
    Response response = tagged("application/json", catalogueBody(service.catalogue, service.control));
    response.headers = {{"Cache-Control", "no-cache"}};
    return response;
}

Response coverResponse(Service& service, const QString& id, const QHttpServerRequest&) {
    const DictionaryRecord* record = service.catalogue.find(parseNumber(id));
    if (record == nullptr)
        return Response::error(404, QStringLiteral("there is no such dictionary"));
    QByteArray& cover = service.covers[record->id];
    if (cover.isEmpty())
        cover = record->cover();
    return tagged("image/png", cover);
}

} // namespace

void addCatalogueRoutes(Service& service) {
    service.route(QLatin1String("catalogue"), readMethods, QStringLiteral("/v1/dictionaries"),
                  catalogueResponse);
    service.route(QLatin1String("cover"), readMethods, QStringLiteral("/v1/dictionaries/<arg>/cover.png"),
                  coverResponse);
}

} // namespace tessaly::server
