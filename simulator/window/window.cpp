#include "window.h"

#include "device_switches.h"
#include "end_signal.h"
#include "profiles.h"
#include "screenshot.h"
#include "simulator/fixture/test_device.h"

#include <QGuiApplication>
#include <QThreadPool>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <unistd.h>
#include <vellum/clock.h>
#include <vellum/device_state.h>

extern void qml_register_types_Tessaly_Simulator();

namespace tessaly::simulator {

namespace {

constexpr int workersPatienceMs = 1000;

void cutPower() {
    ::kill(::getppid(), SIGUSR1); // to the keeper
}

void configure(const Options& options) {
    if (const Profile* const profile = findProfile(options.profile))
        applyProfile(*profile);
    if (!options.language.isEmpty())
        vellum::state::setLanguage(options.language.toStdString());
}

/// Cancels what runs. True if nothing is left running.
bool endWork(QObject* window) {
    QMetaObject::invokeMethod(window, "endWork");
    vellum::clock::beginQuit();
    return QThreadPool::globalInstance()->waitForDone(workersPatienceMs);
}

int show(const Options& options, QGuiApplication& application) {
    fixture::TestDevice device(options.root);
    device.keepLog();
    configure(options);
    DeviceSwitches switches(device, cutPower);
    if (options.convertAhead)
        switches.setServerOptions({QStringLiteral("--convert-ahead")});
    switches.setServerUp(true);

    QQmlApplicationEngine engine;
    QQuickWindow* const window = loadWindow(engine, switches);
    if (!window)
        throw std::runtime_error("the window can not be shown; see " + device.logPath().toStdString());
    if (!options.screenshot.isEmpty())
        saveScreenshot(*window, options.screenshot);
    if (options.quitAfterMs >= 0)
        QTimer::singleShot(options.quitAfterMs, &application, &QCoreApplication::quit);
    const int status = QGuiApplication::exec();

    if (status != 0 && !options.screenshot.isEmpty())
        throw std::runtime_error("can not save the picture " + options.screenshot.toStdString());
    if (!endWork(window))
        ::_exit(status); // the keeper cleans up; a worker that doesn't listen must not hold up the end
    return status;
}

} // namespace

QQuickWindow* loadWindow(QQmlApplicationEngine& engine, DeviceSwitches& switches) {
    qml_register_types_Tessaly_Simulator();
    engine.addImportPath(QStringLiteral(TESSALY_QML_DIR));
    engine.setInitialProperties({{QStringLiteral("device"), QVariant::fromValue(&switches)}});
    engine.load(QUrl(QStringLiteral("qrc:/Tessaly/Simulator/qml/Main.qml")));
    return engine.rootObjects().isEmpty() ? nullptr
                                          : qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
}

int runWindow(const Options& options, char* programName) {
    // A screen of this kind needs no graphics hardware; so it also works where there is none.
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    int argumentCount = 1;
    char* arguments[] = {programName, nullptr};
    QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setApplicationName(QStringLiteral("tessaly-simulator"));
    quitOnEndSignals();
    try {
        return show(options, application);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessaly-simulator: %s\n", error.what());
        return 1;
    }
}

} // namespace tessaly::simulator
