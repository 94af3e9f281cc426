#include "child_process.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

ChildEnd runInChild(const std::function<void()>& work) {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return {};
    const pid_t child = ::fork();
    if (child == 0) {
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
