// Installs the morphology data of an address and says how it ended; as "quit" it leaves its event loop in the
// middle of that, as "tidy" it only starts.

#include <services/tsi_installation_service.h>
#include <vellum/clock.h>

#include <QCoreApplication>
#include <QTimer>
#include <cstdio>

using tessaly::services::TsiInstallationService;
using tessaly::services::TsiInstallationSummary;

int main(int argc, char** argv) {
    TsiInstallationSummary summary; // outlives the application object
    {
        QCoreApplication application(argc, argv);
        const QStringList arguments = QCoreApplication::arguments();
        TsiInstallationService service;
        service.setSummary(&summary);
        QObject::connect(&service, &TsiInstallationService::finished, &application,
                         [](bool success) { QCoreApplication::exit(success ? 0 : 1); });
        if (arguments.value(1) == QLatin1String("tidy"))
            return 0;
        service.install(arguments.value(2));
        if (arguments.value(1) == QLatin1String("quit")) {
            QObject::connect(&service, &TsiInstallationService::progressChanged, &application, [] {
                vellum::clock::wakeAll();
                QCoreApplication::exit(2);
            });
        }
        const int status = QCoreApplication::exec();
        if (status != 2)
            return status;
    }
    return summary.runningCount() == 0 && summary.canAbort() ? 2 : 3;
}
