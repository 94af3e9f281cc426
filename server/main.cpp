#include "routes/service.h"
#include "support/failure.h"
#include "support/options.h"
#include "support/process.h"
#include "support/server_state.h"

#include <QDebug>
#include <QDir>
#include <QGuiApplication>
#include <QLockFile>
#include <QTcpServer>

#include <cstdio>
#include <unistd.h>

namespace tessaly::server {

namespace {

/// Listens on the port that was asked for, else on the remembered one, else on a free one; remembers which.
std::unique_ptr<QTcpServer> listen(quint16 wantedPort, ServerState& state) {
    auto listener = std::make_unique<QTcpServer>();
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

int serve(const Options& options) {
    if (!QDir().mkpath(options.stateFolder))
        throw Failure(QStringLiteral("cannot create the folder %1").arg(options.stateFolder));
    QLockFile lock(options.stateFolder + QStringLiteral("/server.lock"));
    lock.setStaleLockTime(0);
    if (!lock.tryLock())
        throw Failure(QStringLiteral("another server uses the folder %1").arg(options.stateFolder));

    ServerState state(options.stateFolder + QStringLiteral("/state.json"));
    std::unique_ptr<QTcpServer> listener = listen(options.port, state);
    Service service(options, state, listener.release());
    quitOnEndSignals();
    std::printf("listening on %s\n", qPrintable(service.address));
    std::fflush(stdout);
    return QCoreApplication::exec();
}

} // namespace

} // namespace tessaly::server

int main(int argc, char** argv) {
    using namespace tessaly::server;
    const pid_t parent = getppid();
    blockEndSignals();
    // Covers are drawn without any display.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);

    const Options options = parseOptions(QCoreApplication::arguments());
    if (!options.help.isEmpty()) {
        std::fputs(qPrintable(options.help), stdout);
        return 0;
    }
    if (!options.error.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(options.error));
        return 2;
    }
    if (options.exitWithParent && !endWithParent(parent))
        return 0;
    try {
        return serve(options);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", qPrintable(failure.message()));
        return 1;
    }
}
