#include "routes/service.h"

#include "catalogue/source_scanner.h"
#include "routes/routes.h"
#include "support/options.h"
#include "support/server_state.h"

#include <QTcpServer>
#include <QThreadPool>

namespace tessaly::server {

Service::Service(const Options& options, ServerState& state, QTcpServer* listener)
    : address(QStringLiteral("http://127.0.0.1:%1").arg(listener->serverPort()))
    , catalogue(scanSources(options.dictdFolder, options.stateFolder + QStringLiteral("/sources.json")),
                state, address, options.allLanguages)
    , packages(catalogue, state, options.stateFolder)
    , morphology(options.hunspellFolder, options.stateFolder + QStringLiteral("/morphology"),
                 options.allLanguages)
    , apiKey(options.apiKey.toUtf8()) {
    addCatalogueRoutes(*this);
    addPackageRoutes(*this);
    addMorphologyRoutes(*this);
    if (options.control)
        addControlRoutes(*this);
    http.setMissingHandler([this](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
        begin(QLatin1String("other"), request, std::move(responder))
            .send(Answer::error(404, QStringLiteral("there is nothing at this address")));
    });
    http.bind(listener);
}

Service::~Service() {
    QThreadPool::globalInstance()->waitForDone();
}

Exchange Service::begin(QLatin1String kind, const QHttpServerRequest& request,
                        QHttpServerResponder&& responder) {
    control.count(kind);
    return {request, std::move(responder), control.switches().delayMs};
}

} // namespace tessaly::server
