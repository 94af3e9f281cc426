// Plays the whole journey on real parts, without a screen: the product's own classes, the dictionary server,
// the network agent and the installer as processes, files under a device root.

#include "failures.h"
#include "journey.h"
#include "simulator/fixture/test_device.h"

#include <base/log_sink.h>
#include <vellum/device_state.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>

using namespace tessaly;

namespace {

void play(fixture::TestDevice& device, tour::StepLog& log) {
    tour::Journey journey(device, log);
    if (!journey.downloadAndRead())
        return;
    tour::playFailures(device, log);
    journey.deleteAgain();
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays the whole journey of a simulated device, step by step."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("DIR"), QStringLiteral("Folder for tour.json."));
    const QCommandLineOption rootOption(QStringLiteral("root"), QStringLiteral("Folder of the device."),
                                        QStringLiteral("ROOT"));
    parser.addOption(rootOption);
    parser.process(application);
    if (!parser.isSet(rootOption) || parser.positionalArguments().size() != 1) {
        std::fprintf(stderr, "usage: tessaly-tour --root ROOT DIR\n");
        return 2;
    }
    tour::StepLog log;
    std::unique_ptr<fixture::TestDevice> device;
    log.run(QStringLiteral("a device and its dictionary server are there"), [&] {
        device = std::make_unique<fixture::TestDevice>(parser.value(rootOption));
        // A tour that was killed in the middle of a failure left its switches behind.
        vellum::state::setNetworkReachable(true);
        vellum::state::setSecureFreeBytes(-1);
        log::setLogFile(device->path("/var/log/device.log").toStdString());
        return device->startServer().url();
    });
    if (log.allOk())
        play(*device, log);
    const QString folder = parser.positionalArguments().constFirst();
    if (!log.save(folder)) {
        std::fprintf(stderr, "can not write to %s\n", qUtf8Printable(folder));
        return 1;
    }
    return log.allOk() ? 0 : 1;
}
