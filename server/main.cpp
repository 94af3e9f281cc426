#include "http/listener.h"
#include "routes/service.h"
#include "support/files.h"
#include "support/options.h"
#include "support/server_state.h"

#include <QDebug>
#include <QGuiApplication>
#include <QLockFile>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace tessaly::server {

namespace {

/// Keeps SIGTERM and SIGINT from ending the process. To be called before the first thread starts, since
/// threads inherit what is blocked.
sigset_t blockQuitSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

/// Has them end the event loop instead.
void quitOn(const sigset_t& signals) {
    const int descriptor = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
}

/// Listens on the port that was asked for, else on the remembered one, else on a free one; remembers which.
std::unique_ptr<QTcpServer> listen(quint16 wantedPort, ServerState& state) {
    std::unique_ptr<QTcpServer> listener = std::make_unique<Listener>();
    const quint16 port = wantedPort != 0 ? wantedPort : state.port();
    if (!listener->listen(QHostAddress::LocalHost, port)) {
        const QString problem =
            QStringLiteral("cannot listen on port %1: %2").arg(port).arg(listener->errorString());
        if (wantedPort != 0)
            throw Failure(problem);
        qWarning().noquote() << problem + QStringLiteral("; taking another one");
        if (!listener->listen(QHostAddress::LocalHost, 0))
            throw Failure(QStringLiteral("cannot listen: %1").arg(listener->errorString()));
    }
    state.setPort(listener->serverPort());
    return listener;
}

int serve(const Options& options, const sigset_t& quitSignals) {
    makeDirectory(options.stateDirectory);
    QLockFile lock(options.stateDirectory + QStringLiteral("/server.lock"));
    lock.setStaleLockTime(0);
    if (!lock.tryLock())
        throw Failure(QStringLiteral("another server uses the directory %1").arg(options.stateDirectory));

    ServerState state(options.stateDirectory + QStringLiteral("/state.json"));
    Service service(options, state, listen(options.port, state).release());
    quitOn(quitSignals);
    std::printf("listening on %s\n", qPrintable(service.url));
    std::fflush(stdout);
    return QCoreApplication::exec();
}

} // namespace

} // namespace tessaly::server

int main(int argc, char** argv) {
    using namespace tessaly::server;
    const pid_t parent = getppid();
    const sigset_t quitSignals = blockQuitSignals();
    // Covers are drawn without any display.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);

    const Options options = parseOptions();
    if (options.exitWithParent && (prctl(PR_SET_PDEATHSIG, SIGTERM) != 0 || getppid() != parent))
        return 0;
    try {
        return serve(options, quitSignals);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", qPrintable(failure.message()));
        return 1;
    }
}
