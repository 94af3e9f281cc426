#include "window.h"

#include "device_switches.h"
#include "simulator/fixture/test_device.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QSGTextureProvider>
#include <QSocketNotifier>
#include <QThreadPool>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <sys/eventfd.h>
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
    applyProfile(options.profile);
    if (!options.language.isEmpty())
        vellum::state::setLanguage(options.language.toStdString());
}

int endRequest = -1; ///< readable once the process is to end

extern "C" void requestEnd(int) {
    ::eventfd_write(endRequest, 1);
}

/// Has them end the event loop instead of the process. They aren't blocked: programs that the process starts
/// would inherit that.
void quitOnEndSignals(QGuiApplication& application) {
    endRequest = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    auto* const notifier = new QSocketNotifier(endRequest, QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    struct sigaction action = {};
    action.sa_handler = requestEnd;
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(number, &action, nullptr);
}

/// The software renderer puts a changed layer on the screen a frame late, and not every change is followed by
/// a frame.
void drawAgainWhenChanged(QQuickItem& layer) {
    auto* const again = new QTimer(&layer); // past the frame that the change is in
    again->setSingleShot(true);
    QObject::connect(again, &QTimer::timeout, &layer, &QQuickItem::update);
    const auto follow = [&layer, again] {
        if (const QSGTextureProvider* const provider = layer.textureProvider())
            QObject::connect(provider, &QSGTextureProvider::textureChanged, again,
                             qOverload<>(&QTimer::start));
    };
    QObject::connect(layer.window(), &QQuickWindow::frameSwapped, &layer, follow, Qt::SingleShotConnection);
}

/// Cancels what runs. True if nothing is left running.
bool endWork(QObject* window) {
    QMetaObject::invokeMethod(window, "endWork");
    vellum::clock::beginQuit();
    return QThreadPool::globalInstance()->waitForDone(workersPatienceMs);
}

int show(const Options& options) {
    fixture::TestDevice device(options.root);
    device.keepLog();
    configure(options);
    DeviceSwitches switches(device, cutPower);
    if (options.convertAhead)
        switches.setServerOptions({QStringLiteral("--convert-ahead")});
    switches.restoreServer();

    QQmlApplicationEngine engine;
    QQuickWindow* const window = loadWindow(engine, switches);
    if (!window)
        throw std::runtime_error("the window can not be shown; see " + device.logPath().toStdString());

    const int status = QGuiApplication::exec();
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
    if (engine.rootObjects().isEmpty())
        return nullptr;
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    drawAgainWhenChanged(*window->findChild<QQuickItem*>(QStringLiteral("devicePicture")));
    return window;
}

int runWindow(const Options& options, char* programName) {
    // A screen of this kind needs no graphics hardware; so it also works where there is none.
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    int argumentCount = 1;
    char* arguments[] = {programName, nullptr};
    QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setApplicationName(QStringLiteral("tessaly-simulator"));
    quitOnEndSignals(application);
    try {
        return show(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessaly-simulator: %s\n", error.what());
        return 1;
    }
}

} // namespace tessaly::simulator
