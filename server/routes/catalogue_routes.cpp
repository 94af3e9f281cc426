#include "catalogue/cover_painter.h"
#include "control/catalogue_faults.h"
#include "routes/routes.h"
#include "routes/service.h"

#include <QCryptographicHash>
#include <QHash>

#include <memory>

namespace tessaly::server {

namespace {

bool matches(const QByteArray& ifNoneMatch, const QByteArray& tag) {
    const QList<QByteArray> tags = ifNoneMatch.split(',');
    return std::any_of(tags.begin(), tags.end(), [&tag](QByteArray candidate) {
        candidate = candidate.trimmed();
        if (candidate.startsWith("W/"))
            candidate = candidate.sliced(2);
        return candidate == tag || candidate == "*";
    });
}

Answer catalogueAnswer(const Service& service, const QHttpServerRequest& request) {
    const Switches& switches = service.control.switches();
    if (const int status = statusOf(switches.catalogue))
        return Answer::error(status, QStringLiteral("as the switch wants it"));
    Answer answer;
    answer.contentType = "application/json";
    answer.body = catalogueBody(service.catalogue, switches);
    const QByteArray tag =
        '"' + QCryptographicHash::hash(answer.body, QCryptographicHash::Sha256).toHex().left(32) + '"';
    if (matches(request.value("If-None-Match"), tag)) {
        answer.status = 304;
        answer.body.clear();
    }
    answer.headers = {{"ETag", tag}, {"Cache-Control", "no-cache"}};
    return answer;
}

Answer coverAnswer(const DictionaryRecord* record, QHash<int, QByteArray>& painted) {
    if (record == nullptr)
        return Answer::error(404, QStringLiteral("there is no such dictionary"));
    QByteArray& cover = painted[record->id];
    if (cover.isEmpty())
        cover = paintCover(*record);
    Answer answer;
    answer.contentType = "image/png";
    answer.body = cover;
    return answer;
}

} // namespace

void addCatalogueRoutes(Service& service) {
    const auto get = QHttpServerRequest::Method::Get | QHttpServerRequest::Method::Head;
    service.http.route(QStringLiteral("/v1/dictionaries"), get,
                       [&service](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
                           const Exchange exchange =
                               service.begin(QLatin1String("catalogue"), request, std::move(responder));
                           exchange.send(catalogueAnswer(service, request));
                       });
    service.http.route(
        QStringLiteral("/v1/dictionaries/<arg>/cover.png"), get,
        [&service, painted = std::make_shared<QHash<int, QByteArray>>()](
            const QString& id, const QHttpServerRequest& request, QHttpServerResponder&& responder) {
            const Exchange exchange = service.begin(QLatin1String("cover"), request, std::move(responder));
            const DictionaryRecord* record = service.catalogue.find(parseNumber(id).value_or(0));
            exchange.send(coverAnswer(record, *painted));
        });
}

} // namespace tessaly::server
