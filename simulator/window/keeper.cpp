#include "keeper.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace tessaly::simulator {

namespace {

constexpr int patienceSeconds = 5; ///< from the request to end to killing

sigset_t signalsOf(std::initializer_list<int> numbers) {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : numbers)
        sigaddset(&set, number);
    return set;
}

/// -1 for a process that is gone.
pid_t parentOf(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    std::getline(file, line);
    const auto end = line.rfind(')'); // of the program's name, which may hold anything
    int parent = -1;
    char state = 0;
    if (end == std::string::npos || std::sscanf(line.c_str() + end + 1, " %c %d", &state, &parent) != 2)
        return -1;
    return parent;
}

void killChildren() {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename();
        pid_t process = -1;
        if (std::from_chars(name.data(), name.data() + name.size(), process).ec == std::errc() &&
            parentOf(process) == ::getpid())
            ::kill(process, SIGKILL);
    }
}

/// Ends every descendant: the children of a killed child become this process's own.
void endDescendants() {
    const timespec pause = {0, 2'000'000};
    for (;;) {
        const pid_t ended = ::waitpid(-1, nullptr, WNOHANG);
        if (ended < 0 && errno == ECHILD)
            return;
        if (ended <= 0) {
            killChildren();
            ::nanosleep(&pause, nullptr);
        }
    }
}

/// Waits for signals instead of handling them: they stay blocked from before the first fork on.
sigset_t keptSignals() {
    return signalsOf({SIGCHLD, SIGTERM, SIGINT, SIGHUP, SIGUSR1});
}

class Keeper {
public:
    /// `restarts`: begins the work again after a power cut, which the keeper below passes on instead.
    explicit Keeper(bool restarts)
        : m_restarts(restarts) {
        ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    }

    int run(const std::function<int()>& work) {
        do {
            m_hasPowerCut = false;
            start(work);
            const int status = waitForEnd();
            endDescendants();
            if (!m_hasPowerCut || m_isEnding)
                return status;
        } while (true);
    }

private:
    void start(const std::function<int()>& work) {
        const pid_t keeper = ::getpid();
        m_child = ::fork();
        if (m_child < 0)
            throw std::system_error(errno, std::generic_category(), "can not start a process");
        if (m_child > 0)
            return;
        ::prctl(PR_SET_PDEATHSIG, m_restarts ? SIGKILL : SIGTERM);
        if (::getppid() != keeper)
            ::_exit(1);
        // Out of reach of what a terminal sends to all its processes: that comes by way of the keeper.
        ::setpgid(0, 0);
        const int status = work();
        std::fflush(nullptr);
        ::_exit(status);
    }

    int waitForEnd() {
        const sigset_t awaited = keptSignals();
        const timespec second = {1, 0};
        for (;;) {
            const int number =
                m_isEnding ? ::sigtimedwait(&awaited, nullptr, &second) : ::sigwaitinfo(&awaited, nullptr);
            if (number == SIGUSR1) {
                m_hasPowerCut = m_restarts;
                ::kill(m_child, m_restarts ? SIGKILL : SIGUSR1);
            } else if (number == SIGTERM || number == SIGINT || number == SIGHUP) {
                ::kill(m_child, SIGTERM);
                if (!m_isEnding)
                    m_deadline = std::time(nullptr) + patienceSeconds + (m_restarts ? 0 : 2);
                m_isEnding = true;
            }
            if (m_isEnding && std::time(nullptr) >= m_deadline)
                ::kill(m_child, SIGKILL);
            int status = 0;
            for (pid_t ended = 0; (ended = ::waitpid(-1, &status, WNOHANG)) > 0;) {
                if (ended == m_child)
                    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            }
        }
    }

    const bool m_restarts;
    pid_t m_child = -1;
    bool m_hasPowerCut = false;
    bool m_isEnding = false;
    std::time_t m_deadline = 0;
};

} // namespace

int keep(const std::function<int()>& work) {
    const sigset_t kept = keptSignals();
    sigset_t before;
    ::sigprocmask(SIG_BLOCK, &kept, &before);
    Keeper outer(false);
    return outer.run([&work, &before] {
        Keeper inner(true);
        return inner.run([&work, &before] {
            ::sigprocmask(SIG_SETMASK, &before, nullptr);
            return work();
        });
    });
}

} // namespace tessaly::simulator
