#include "child_process.h"

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
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return {};
    const pid_t child = ::fork();
    if (child == 0) {
        isChild = true;
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        std::signal(SIGABRT, SIG_DFL); // Qt Test's handler would report a crash of the test
        ::dup2(ends[1], STDERR_FILENO);
        ::close(ends[0]);
        work();
        ::_exit(0);
    }
    ::close(ends[1]);
    ChildEnd end;
    QByteArray output;
    char buffer[4096];
    for (ssize_t got = 0; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;)
        output.append(buffer, got);
    ::close(ends[0]);
    end.output = QString::fromUtf8(output);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status))
        end.exitStatus = WEXITSTATUS(status);
    else
        end.signal = WTERMSIG(status);
    return end;
}
