#include "child_process.h"

#include <QTemporaryFile>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
bool isChild = false;
}

/// Asked by the leak checker when a process exits: a child that leaves in the middle still uses everything.
extern "C" __attribute__((visibility("default"))) int
__lsan_is_turned_off();      // NOLINT(bugprone-reserved-identifier)
int __lsan_is_turned_off() { // NOLINT(bugprone-reserved-identifier)
    return isChild ? 1 : 0;
}

ChildEnd runInChild(const std::function<void()>& work) {
    QTemporaryFile output;
    output.open();
    const pid_t child = ::fork();
    if (child == 0) {
        isChild = true;
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        std::signal(SIGABRT, SIG_DFL); // Qt Test's handler would report a crash of the test
        ::dup2(output.handle(), STDERR_FILENO);
        work();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    output.seek(0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0,
            QString::fromUtf8(output.readAll())};
}
