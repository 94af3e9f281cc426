#pragma once

#include "catalogue/catalogue.h"
#include "control/control.h"
#include "http/exchange.h"
#include "morphology/morphology_store.h"
#include "packages/dictionary_store.h"
#include "packages/package_store.h"

#include <QHash>
#include <QHttpServer>

class QTcpServer;

namespace tessaly::server {

class ServerState;
struct Options;

/// Everything behind the server's URLs. Lives in the server's thread.
class Service {
public:
    using Methods = QHttpServerRequest::Methods;
    /// `argument` is what stands for "<arg>" in the path.
    using Handler = Response (*)(Service& service, const QString& argument,
                                 const QHttpServerRequest& request);

    /// Serves on `listener`, which it takes over; `state` has to outlive it. Throws Failure.
    Service(const Options& options, ServerState& state, QTcpServer* listener);
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    QHttpServer http;
    QString url; ///< "http://127.0.0.1:PORT"
    Catalogue catalogue;
    DictionaryStore dictionaries;
    PackageStore packages;
    MorphologyStore morphology;
    Control control;
    QHash<int, QByteArray> covers; ///< by record number, those that were asked for

    /// Has `handler` respond to a path, which may have one "<arg>".
    void route(QLatin1String kind, Methods methods, const QString& path, Handler handler);

    /// Counts the request under its kind, if it has one, and heeds the delay switch.
    Exchange* begin(QLatin1String kind, const QHttpServerRequest& request, QHttpServerResponder&& responder);
};

constexpr auto readMethods = QHttpServerRequest::Method::Get | QHttpServerRequest::Method::Head;

/// Each adds the routes of one subject; the service has to outlive its HTTP server.
void addCatalogueRoutes(Service& service);
void addPackageRoutes(Service& service);
void addMorphologyRoutes(Service& service);

/// A record or package number as a URL has it: decimal digits. 0 for anything else.
int parseNumber(const QString& text);

} // namespace tessaly::server
