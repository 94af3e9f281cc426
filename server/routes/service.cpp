#include "routes/service.h"

#include "support/options.h"

#include <QJsonDocument>
#include <QTcpServer>

#include <algorithm>

namespace tessaly::server {

namespace {

Response showSwitches(Service& service, const QString&, const QHttpServerRequest&) {
    return Response::json(service.control.toJson());
}

Response setSwitches(Service& service, const QString&, const QHttpServerRequest& request) {
    const QJsonDocument document = QJsonDocument::fromJson(request.body());
    const QString error = document.isObject() ? service.control.apply(document.object())
                                              : QStringLiteral("the body has to be a JSON object");
    return error.isEmpty() ? showSwitches(service, {}, request) : Response::error(400, error);
}

} // namespace

Service::Service(const Options& options, ServerState& state, QTcpServer* listener)
    : url(QStringLiteral("http://127.0.0.1:%1").arg(listener->serverPort()))
    , catalogue(options.dictdDirectory, state, url, options.allLanguages)
    , dictionaries(options.stateDirectory + QStringLiteral("/converted"), catalogue.records())
    , packages(catalogue, dictionaries, state, options.stateDirectory + QStringLiteral("/packages"))
    , morphology(options.hunspellDirectory, options.stateDirectory + QStringLiteral("/morphology"),
                 options.allLanguages) {
    addCatalogueRoutes(*this);
    addPackageRoutes(*this);
    addMorphologyRoutes(*this);
    if (options.control) {
        // Neither counted nor delayed: a test has to get through to put an end to what it has set.
        route({}, readMethods, QStringLiteral("/control"), showSwitches);
        route({}, QHttpServerRequest::Method::Post, QStringLiteral("/control"), setSwitches);
    }
    http.setMissingHandler([this](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
        begin(QLatin1String("other"), request, std::move(responder))
            ->send(Response::error(404, QStringLiteral("there is nothing at this URL")));
    });
    http.bind(listener);
    if (options.convertAhead)
        dictionaries.convertAhead(catalogue.records());
}

void Service::route(QLatin1String kind, Methods methods, const QString& path, Handler handler) {
    const auto respond = [this, kind, handler](const QString& argument, const QHttpServerRequest& request,
                                               QHttpServerResponder&& responder) {
        begin(kind, request, std::move(responder))->send(handler(*this, argument, request));
    };
    if (path.contains(u"<arg>"))
        http.route(path, methods, respond);
    else
        http.route(path, methods,
                   [respond](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
                       respond({}, request, std::move(responder));
                   });
}

Exchange* Service::begin(QLatin1String kind, const QHttpServerRequest& request,
                         QHttpServerResponder&& responder) {
    if (!kind.isEmpty())
        control.count(kind);
    const int delay = kind.isEmpty() ? 0 : control.number(QLatin1String("delay_ms"));
    return new Exchange(request, std::move(responder), delay);
}

int parseNumber(const QString& text) {
    const bool isPlain =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    return isPlain ? text.toInt() : 0;
}

} // namespace tessaly::server
