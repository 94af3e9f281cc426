// Installs the morphology data of an address and says how it ended. "quit" leaves the event loop in the
// middle of that, "tidy" only starts.

#include <services/tsi_installation_service.h>
#include <vellum/clock.h>

#include <QCoreApplication>

using namespace tessaly::services;

int main(int argc, char** argv) {
    TsiInstallationSummary summary; // outlives the application object
    int status = 0;
    {
        QCoreApplication application(argc, argv);
        const QString mode = QCoreApplication::arguments().value(1);
        TsiInstallationService service;
        service.setSummary(&summary);
        QObject::connect(&service, &TsiInstallationService::finished, &application,
                         [](bool success) { QCoreApplication::exit(success ? 0 : 1); });
        if (arguments.value(1) == QLatin1String("tidy"))
            return 0;
        service.install(arguments.value(2));
        if (arguments.value(1) == QLatin1String("quit")) {
            QObject::connect(&service, &TsiInstallationService::progressChanged, &application, [] {
                vellum::clock::beginQuit();
                QCoreApplication::exit(2);
            });
        }
    }
    return summary.runningCount() == 0 ? status : 3;
}
