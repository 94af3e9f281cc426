#pragma once

#include "catalogue/catalogue.h"
#include "control/control.h"
#include "http/exchange.h"
#include "morphology/morphology_store.h"
#include "packages/package_store.h"

#include <QHttpServer>

class QTcpServer;

namespace tessaly::server {

class ServerState;
struct Options;

/// Everything behind the server's addresses. Lives in the server's thread.
class Service {
public:
    /// Serves on `listener`, which it takes over; `state` has to outlive it. Throws Failure.
    Service(const Options& options, ServerState& state, QTcpServer* listener);
    ~Service(); ///< waits for the workers
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    QHttpServer http;
    QString address; ///< "http://127.0.0.1:PORT"
    Catalogue catalogue;
    PackageStore packages;
    MorphologyStore morphology;
    Control control;
    QByteArray apiKey;

    /// Counts the request under its kind and heeds the delay switch. Every request starts with this.
    Exchange begin(QLatin1String kind, const QHttpServerRequest& request, QHttpServerResponder&& responder);
};

} // namespace tessaly::server
