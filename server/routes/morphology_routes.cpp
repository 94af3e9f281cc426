#include "routes/routes.h"
#include "routes/service.h"
#include "support/failure.h"

#include <QFileInfo>
#include <QtConcurrent>

namespace tessaly::server {

namespace {

bool hasKey(const Service& service, const QHttpServerRequest& request) {
    return request.value("X-Api-Key") == service.apiKey;
}

Answer refusal() {
    return Answer::error(401, QStringLiteral("the header X-Api-Key is missing or wrong"));
}

Answer listAnswer(const Service& service) {
    QJsonObject list;
    for (const QString& language : service.morphology.languages())
        list.insert(language, QStringLiteral("%1/v1/morphology/%2.zip").arg(service.address, language));
    return Answer::json(list);
}

Answer archiveAnswer(const MorphologyStore& store, const QString& language) {
    try {
        const QString path = store.archive(language);
        Answer answer;
        answer.contentType = "application/zip";
        answer.file = FilePart{path, 0, QFileInfo(path).size(), 0};
        return answer;
    } catch (const Failure& failure) {
        return Answer::error(500, failure.message());
    }
}

void sendArchive(Service& service, const QString& file, const QHttpServerRequest& request,
                 const Exchange& exchange) {
    const QString language = file.chopped(file.endsWith(u".zip") ? 4 : 0);
    if (!hasKey(service, request))
        return exchange.send(refusal());
    if (!file.endsWith(u".zip") || !service.morphology.languages().contains(language))
        return exchange.send(Answer::error(404, QStringLiteral("there is no data for this language")));
    // The first request for a language packs its files, too long a job for the thread that serves everybody.
    QtConcurrent::run([&service, language] {
        return archiveAnswer(service.morphology, language);
    }).then(&service.http, [exchange](const Answer& answer) { exchange.send(answer); });
}

} // namespace

void addMorphologyRoutes(Service& service) {
    const auto get = QHttpServerRequest::Method::Get | QHttpServerRequest::Method::Head;
    service.http.route(QStringLiteral("/v1/morphology"), get,
                       [&service](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
                           const Exchange exchange =
                               service.begin(QLatin1String("morphology"), request, std::move(responder));
                           exchange.send(hasKey(service, request) ? listAnswer(service) : refusal());
                       });
    service.http.route(
        QStringLiteral("/v1/morphology/<arg>"), get,
        [&service](const QString& file, const QHttpServerRequest& request, QHttpServerResponder&& responder) {
            sendArchive(service, file, request,
                        service.begin(QLatin1String("morphology_file"), request, std::move(responder)));
        });
}

} // namespace tessaly::server
