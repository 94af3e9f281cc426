#include "end_signal.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tessaly::simulator {

namespace {

int endRequest = -1; ///< readable once the process is to end

extern "C" void requestEnd(int) {
    ::eventfd_write(endRequest, 1);
}

} // namespace

void quitOnEndSignals() {
    endRequest = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    auto* const notifier =
        new QSocketNotifier(endRequest, QSocketNotifier::Read, QCoreApplication::instance());
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

} // namespace tessaly::simulator
