#include "routes/service.h"
#include "support/files.h"

#include <QUrlQuery>

namespace tessaly::server {

namespace {

constexpr qsizetype idsMaximum = 200;

Response unknownPackage() {
    return Response::error(404, QStringLiteral("there is no such package"));
}

/// What the switches `package_request` and `package_state` have in common.
std::optional<Response> faultyResponse(const Control& control, QLatin1String name) {
    if (const int status = control.status(name))
        return Response::error(status, QStringLiteral("as the switch wants it"));
    if (control.mode(name) != u"malformed")
        return std::nullopt;
    Response response;
    response.contentType = "application/json";
    response.body = R"({"task_id": , "url")";
    return response;
}

Response requestPackage(Service& service, const QString&, const QHttpServerRequest& request) {
    const QLatin1String name("package_request");
    if (const std::optional<Response> fault = faultyResponse(service.control, name))
        return *fault;
    if (service.control.mode(name) == u"wait")
        return Response::error(429, QStringLiteral("ask again later"));

    const QString text = request.query().queryItemValue(QStringLiteral("ids"), QUrl::FullyDecoded);
    const QStringList parts = text.split(u',');
    QList<int> ids;
    for (const QString& part : parts)
        ids << parseNumber(part);
    if (ids.size() > idsMaximum)
        return Response::error(400, QStringLiteral("at most %1 dictionaries in a package").arg(idsMaximum));
    if (ids.contains(0))
        return Response::error(400, QStringLiteral("\"ids\" has to be numbers separated by commas"));
    for (const int id : ids) {
        if (service.catalogue.find(id) == nullptr)
            return Response::error(404, QStringLiteral("there is no dictionary %1").arg(id));
    }
    try {
        const int number =
            service.packages.request(ids, service.control.mode(QLatin1String("package_fault")),
                                     service.control.number(QLatin1String("package_build_ms")));
        return Response::json({{QStringLiteral("task_id"), number}}, 202);
    } catch (const Failure& failure) {
        return Response::error(500, failure.message());
    }
}

Response packageState(Service& service, const QString& number, const QHttpServerRequest&) {
    const Package* package = service.packages.find(parseNumber(number));
    if (package == nullptr)
        return unknownPackage();
    const QLatin1String name("package_state");
    if (const std::optional<Response> fault = faultyResponse(service.control, name))
        return *fault;
    if (service.control.mode(name) == u"wait" || !package->building.isFinished())
        return Response::json({}, 202);
    const BuiltPackage built = package->building.result();
    if (!built.error.isEmpty())
        return Response::error(500, built.error);

    const bool isWrong = service.control.mode(QLatin1String("package_fault")) == u"wrong_size";
    const auto announced = [isWrong](const QByteArray& sha256) {
        return QString::fromLatin1(isWrong ? QByteArray(64, '0') : sha256);
    };
    return Response::json(
        {{QStringLiteral("url"), QStringLiteral("%1/v1/packages/%2/file.tsi").arg(service.url, number)},
         {QStringLiteral("size"), built.size + (isWrong ? 1 : 0)},
         {QStringLiteral("sha256"), announced(built.sha256)},
         {QStringLiteral("manifest_sha256"), announced(built.manifestSha256)}});
}

Response packageFile(Service& service, const QString& number, const QHttpServerRequest&) {
    const Package* package = service.packages.find(parseNumber(number));
    if (package == nullptr || !package->building.isFinished())
        return unknownPackage();
    const BuiltPackage built = package->building.result();
    if (!built.error.isEmpty())
        return unknownPackage();
    const bool isTruncated = service.control.mode(QLatin1String("package_fault")) == u"truncated";
    Response response;
    response.contentType = "application/octet-stream";
    response.tag = '"' + built.sha256 + '"';
    response.file = FilePart{package->path, 0, isTruncated ? built.size / 2 : built.size,
                             service.control.number(QLatin1String("bytes_per_second"))};
    return response;
}

Response reportInstalled(Service& service, const QString& argument, const QHttpServerRequest&) {
    const int number = parseNumber(argument);
    if (service.packages.find(number) == nullptr)
        return unknownPackage();
    service.control.report(number);
    Response response;
    response.contentType = "text/plain";
    response.body = "noted as installed: package " + QByteArray::number(number);
    return response;
}

} // namespace

void addPackageRoutes(Service& service) {
    constexpr auto post = QHttpServerRequest::Method::Post;
    service.route(QLatin1String("package_request"), post, QStringLiteral("/v1/packages"), requestPackage);
    service.route(QLatin1String("package_state"), readMethods, QStringLiteral("/v1/packages/<arg>"),
                  packageState);
    service.route(QLatin1String("package_file"), readMethods, QStringLiteral("/v1/packages/<arg>/file.tsi"),
                  packageFile);
    service.route(QLatin1String("installed"), post, QStringLiteral("/v1/packages/<arg>/installed"),
                  reportInstalled);
}

} // namespace tessaly::server
