// Plays the whole journey on real parts, headless: the interface on the device's screen, used by real fingers
// and keys, with server, network agent and installer as processes, and files under a device root.

#include "journey.h"
#include "simulator/fixture/log_watch.h"
#include "simulator/fixture/test_device.h"

#include <vellum/clock.h>
#include <vellum/device_state.h>

#include <QCommandLineParser>
#include <QGuiApplication>
#include <cstdio>

using namespace tessaly;

namespace {

void play(fixture::TestDevice& device, tour::StepLog& log, const QString& folder, bool touch, LogWatch& watch,
          int& pictureCount) {
    vellum::state::setInput(touch ? vellum::state::Input::Touch : vellum::state::Input::Keys);
    std::unique_ptr<tour::Screen> screen;
    const QString name = touch ? QStringLiteral("touch") : QStringLiteral("keys");
    log.run(name + QStringLiteral(": a page is read"), [&] {
        screen = std::make_unique<tour::Screen>(folder, name, watch, pictureCount);
        screen->waitFor(tour::text("@ReaderDictionaries"));
        return QString();
    });
    if (!log.allOk())
        return;
    const tour::Hand hand(*screen, touch);
    tour::Journey journey(device, hand, log);
    if (!journey.downloadAndRead())
        return;
    journey.lookAround();
    tour::playFailures(device, hand, log);
    journey.deleteAgain();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays the whole journey of a simulated device, step by step."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("DIR"),
                                 QStringLiteral("Folder for tour.json and the pictures."));
    const QCommandLineOption rootOption(QStringLiteral("root"), QStringLiteral("Folder of the device."),
                                        QStringLiteral("ROOT"));
    const QCommandLineOption inputOption(
        QStringLiteral("input"), QStringLiteral("touch or keys; both without it."), QStringLiteral("INPUT"));
    parser.addOptions({rootOption, inputOption});
    parser.process(application);
    const QString input = parser.value(inputOption);
    if (!parser.isSet(rootOption) || parser.positionalArguments().size() != 1 ||
        !QStringList{QString(), QStringLiteral("touch"), QStringLiteral("keys")}.contains(input)) {
        std::fprintf(stderr, "usage: tessaly-tour --root ROOT [--input touch|keys] DIR\n");
        return 2;
    }
    const QString folder = parser.positionalArguments().constFirst();
    tour::StepLog log;
    std::unique_ptr<fixture::TestDevice> device;
    log.run(QStringLiteral("a device and its dictionary server are there"), [&] {
        device = std::make_unique<fixture::TestDevice>(parser.value(rootOption));
        device->keepLog();
        // A tour that was killed in the middle of a failure left its switches behind.
        vellum::state::setNetworkReachable(true);
        vellum::state::setSecureFreeBytes(-1);
        vellum::clock::setSpeed(tour::clockSpeed);
        return device->startServer().url();
    });
    int pictureCount = 0;
    LogWatch watch;
    for (const char* const failure :
         {"Error installing dictionaries", "Can not download", "Failed to open dictionary"})
        watch.allow(QLatin1String(failure));
    for (const bool touch : {true, false}) {
        if (log.allOk() && input != (touch ? QStringLiteral("keys") : QStringLiteral("touch")))
            play(*device, log, folder, touch, watch, pictureCount);
    }
    vellum::clock::beginQuit();
    const QString deviceLog = device ? device->logPath() : QString();
    device.reset(); // gives the console back
    const bool isSaved = log.save(folder);
    if (!isSaved)
        std::fprintf(stderr, "can not write to %s\n", qUtf8Printable(folder));
    if (!log.allOk() && !deviceLog.isEmpty())
        std::fprintf(stderr, "the device's log: %s\n", qUtf8Printable(deviceLog));
    return isSaved && log.allOk() ? 0 : 1;
}
