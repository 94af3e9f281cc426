#include "routes/routes.h"
#include "routes/service.h"

#include <QJsonDocument>

namespace tessaly::server {

namespace {

Answer changeAnswer(Control& control, const QByteArray& body) {
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject())
        return Answer::error(400, QStringLiteral("the body has to be a JSON object"));
    const QString error = control.apply(document.object());
    return error.isEmpty() ? Answer::json(control.toJson()) : Answer::error(400, error);
}

} // namespace

void addControlRoutes(Service& service) {
    // Neither counted nor delayed: a test has to get through to put an end to what it has set.
    const QString path = QStringLiteral("/control");
    service.http.route(
        path, QHttpServerRequest::Method::Get,
        [&service](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
            Exchange(request, std::move(responder), 0).send(Answer::json(service.control.toJson()));
        });
    service.http.route(
        path, QHttpServerRequest::Method::Post,
        [&service](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
            Exchange(request, std::move(responder), 0).send(changeAnswer(service.control, request.body()));
        });
}

} // namespace tessaly::server
