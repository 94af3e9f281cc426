#include "http/byte_range.h"
#include "routes/routes.h"
#include "routes/service.h"
#include "support/failure.h"

#include <QUrlQuery>

namespace tessaly::server {

namespace {

constexpr qsizetype maximumIds = 200;

Answer unknownPackage() {
    return Answer::error(404, QStringLiteral("there is no such package"));
}

Answer malformedAnswer() {
    Answer answer;
    answer.contentType = "application/json";
    answer.body = R"({"task_id": , "url")";
    return answer;
}

Answer requestAnswer(Service& service, const QHttpServerRequest& request) {
    const Switches& switches = service.control.switches();
    if (const int status = statusOf(switches.packageRequest))
        return Answer::error(status, QStringLiteral("as the switch wants it"));
    if (switches.packageRequest == u"wait")
        return Answer::error(429, QStringLiteral("ask again later"));
    if (switches.packageRequest == u"malformed")
        return malformedAnswer();

    const QString text = request.query().queryItemValue(QStringLiteral("ids"), QUrl::FullyDecoded);
    const QStringList parts = text.split(u',');
    if (parts.size() > maximumIds)
        return Answer::error(400, QStringLiteral("at most %1 dictionaries in a package").arg(maximumIds));
    QList<int> ids;
    for (const QString& part : parts) {
        const std::optional<int> id = parseNumber(part);
        if (!id)
            return Answer::error(400, QStringLiteral("\"ids\" has to be numbers separated by commas"));
        ids << *id;
    }
    for (const int id : ids) {
        if (service.catalogue.find(id) == nullptr)
            return Answer::error(404, QStringLiteral("there is no dictionary %1").arg(id));
    }
    try {
        const int number = service.packages.request(ids, switches.builtInFault(), switches.packageBuildMs);
        return Answer::json({{QStringLiteral("task_id"), number}}, 202);
    } catch (const Failure& failure) {
        return Answer::error(500, failure.message());
    }
}

Answer stateAnswer(const Service& service, int number) {
    const Package* package = service.packages.find(number);
    if (package == nullptr)
        return unknownPackage();
    const Switches& switches = service.control.switches();
    if (const int status = statusOf(switches.packageState))
        return Answer::error(status, QStringLiteral("as the switch wants it"));
    if (switches.packageState == u"malformed")
        return malformedAnswer();
    if (switches.packageState == u"wait" || package->stage == Package::Stage::Building)
        return Answer::json({}, 202);
    if (package->stage == Package::Stage::Failed)
        return Answer::error(500, package->built.error);

    qint64 size = package->built.size;
    QByteArray sha256 = package->built.sha256;
    if (switches.packageFault == u"wrong_size") {
        size += 1;
        sha256 = QByteArray(sha256.size(), '0');
    }
    return Answer::json({{QStringLiteral("url"),
                          QStringLiteral("%1/v1/packages/%2/file.tsi").arg(service.address).arg(number)},
                         {QStringLiteral("size"), size},
                         {QStringLiteral("sha256"), QString::fromLatin1(sha256)}});
}

Answer fileAnswer(const Service& service, int number, const QHttpServerRequest& request) {
    const Package* package = service.packages.find(number);
    if (package == nullptr || package->stage != Package::Stage::Ready)
        return unknownPackage();
    const Switches& switches = service.control.switches();
    const qint64 size = switches.packageFault == u"truncated" ? package->built.size / 2 : package->built.size;
    const QByteArray tag = '"' + package->built.sha256 + '"';
    // A client that has part of another file is to get the whole of this one.
    const QByteArray ifRange = request.value("If-Range");
    const bool same = ifRange.isEmpty() || ifRange == tag;
    const ByteRange range = parseByteRange(same ? request.value("Range") : QByteArray(), size);

    Answer answer;
    answer.headers = {{"Accept-Ranges", "bytes"}, {"ETag", tag}};
    if (range.kind == ByteRange::Kind::Unsatisfiable) {
        answer.status = 416;
        answer.headers << qMakePair(QByteArray("Content-Range"), "bytes */" + QByteArray::number(size));
        return answer;
    }
    answer.contentType = "application/octet-stream";
    answer.file = FilePart{package->path, range.offset, range.length, switches.bytesPerSecond};
    if (range.kind == ByteRange::Kind::Part) {
        answer.status = 206;
        const QString content =
            QStringLiteral("bytes %1-%2/%3").arg(range.offset).arg(range.offset + range.length - 1).arg(size);
        answer.headers << qMakePair(QByteArray("Content-Range"), content.toLatin1());
    }
    return answer;
}

Answer installedAnswer(Service& service, int number) {
    if (service.packages.find(number) == nullptr)
        return unknownPackage();
    service.control.report(number);
    return Answer::text(QStringLiteral("package %1 is noted as installed").arg(number));
}

} // namespace

void addPackageRoutes(Service& service) {
    const auto get = QHttpServerRequest::Method::Get | QHttpServerRequest::Method::Head;
    const auto post = QHttpServerRequest::Method::Post;
    service.http.route(QStringLiteral("/v1/packages"), post,
                       [&service](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
                           const Exchange exchange =
                               service.begin(QLatin1String("package_request"), request, std::move(responder));
                           exchange.send(requestAnswer(service, request));
                       });
    service.http.route(QStringLiteral("/v1/packages/<arg>"), get,
                       [&service](const QString& number, const QHttpServerRequest& request,
                                  QHttpServerResponder&& responder) {
                           const Exchange exchange =
                               service.begin(QLatin1String("package_state"), request, std::move(responder));
                           exchange.send(stateAnswer(service, parseNumber(number).value_or(0)));
                       });
    service.http.route(QStringLiteral("/v1/packages/<arg>/file.tsi"), get,
                       [&service](const QString& number, const QHttpServerRequest& request,
                                  QHttpServerResponder&& responder) {
                           const Exchange exchange =
                               service.begin(QLatin1String("package_file"), request, std::move(responder));
                           exchange.send(fileAnswer(service, parseNumber(number).value_or(0), request));
                       });
    service.http.route(QStringLiteral("/v1/packages/<arg>/installed"), post,
                       [&service](const QString& number, const QHttpServerRequest& request,
                                  QHttpServerResponder&& responder) {
                           const Exchange exchange =
                               service.begin(QLatin1String("installed"), request, std::move(responder));
                           exchange.send(installedAnswer(service, parseNumber(number).value_or(0)));
                       });
}

} // namespace tessaly::server
