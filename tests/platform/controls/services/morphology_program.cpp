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
        QObject::connect(&service, &TsiInstallationService::progressChanged, &application, [&] {
            if (mode != QLatin1String("quit") || service.progress() == 0)
                return;
            vellum::clock::beginQuit();
            QCoreApplication::exit(2);
        });
        if (mode != QLatin1String("tidy")) {
            service.install(QCoreApplication::arguments().value(2));
            status = QCoreApplication::exec();
        }
    }
    return summary.runningCount() == 0 ? status : 3;
}
