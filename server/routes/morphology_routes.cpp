#include "routes/service.h"
#include "support/files.h"

#include <QFileInfo>

namespace tessaly::server {

namespace {

bool hasKey(const QHttpServerRequest& request) {
    return request.value("X-Api-Key") == "reader-development-key";
}

Response refusal() {
    return Response::error(401, QStringLiteral("the header X-Api-Key is missing or wrong"));
}

Response listResponse(Service& service, const QString&, const QHttpServerRequest& request) {
    if (!hasKey(request))
        return refusal();
    QJsonObject list;
    for (const QString& language : service.morphology.languages())
        list.insert(language, QStringLiteral("%1/v1/morphology/%2.zip").arg(service.url, language));
    return Response::json(list);
}

Response archiveResponse(Service& service, const QString& file, const QHttpServerRequest& request) {
    if (!hasKey(request))
        return refusal();
    const QString language = file.chopped(file.endsWith(u".zip") ? 4 : 0);
    if (language == file || !service.morphology.languages().contains(language))
        return Response::error(404, QStringLiteral("there is no data for this language"));
    try {
        const QFileInfo archive(service.morphology.archive(language));
        Response response;
        response.contentType = "application/zip";
        response.file = FilePart{archive.filePath(), 0, archive.size(), 0};
        response.tag = '"' + archive.completeBaseName().toUtf8() + '"';
        return response;
    } catch (const Failure& failure) {
        return Response::error(500, failure.message());
    }
}

} // namespace

void addMorphologyRoutes(Service& service) {
    service.route(QLatin1String("morphology"), readMethods, QStringLiteral("/v1/morphology"), listResponse);
    service.route(QLatin1String("morphology_file"), readMethods, QStringLiteral("/v1/morphology/<arg>"),
                  archiveResponse);
}

} // namespace tessaly::server
