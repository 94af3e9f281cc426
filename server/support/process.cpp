#include "support/process.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace tessaly::server {

namespace {

sigset_t endSignals() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    return set;
}

} // namespace

void blockEndSignals() {
    const sigset_t set = endSignals();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

void quitOnEndSignals() {
    const sigset_t set = endSignals();
    const int descriptor = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
}

bool endWithParent(pid_t parent) {
    return prctl(PR_SET_PDEATHSIG, SIGTERM) == 0 && getppid() == parent;
}

} // namespace tessaly::server
