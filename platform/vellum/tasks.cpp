#include <base/device_root.h>
#include <vellum/clock.h>
#include <vellum/vellum.h>

#include <cerrno>
#include <charconv>
#include <condition_variable>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <poll.h>
#include <set>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Children {
    std::mutex mutex;
    std::condition_variable ended;
    std::set<pid_t> running;
};

Children& children() {
    // Never destroyed: reapers may outlive the static objects.
    static auto* const instance = new Children;
    return *instance;
}

/// Each child has a thread that waits for it, so that it is reaped the moment it ends.
void reap(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    const std::lock_guard lock(children().mutex);
    children().running.erase(child);
    children().ended.notify_all();
}

/// The program that a process runs. Empty for a process that is gone, a zombie included.
fs::path programOf(pid_t process) {
    std::error_code error;
    return fs::read_symlink("/proc/" + std::to_string(process) + "/exe", error);
}

/// posix_spawn() that returns once /proc names the child's program. It alone returns a moment earlier, which
/// one processor lets the parent see; what is closed on execution is closed after that moment.
int spawn(pid_t& child, const std::string& program, char* const* arguments) {
    constexpr int patienceMs = 1000; // in case a child that runs no program holds the pipe
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return errno;
    const int failure = ::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ);
    ::close(ends[1]);
    pollfd closing{ends[0], POLLIN, 0};
    while (failure == 0 && ::poll(&closing, 1, patienceMs) < 0 && errno == EINTR)
        continue;
    ::close(ends[0]);
    return failure;
}

fs::path canonicalHostPath(const std::string& devicePath) {
    std::error_code error;
    return fs::weakly_canonical(tessaly::base::hostPath(devicePath), error);
}

/// Until the child has ended, or the process is about to quit.
void waitForChild(pid_t child) {
    bool isQuitting = false;
    const vellum::clock::OnQuit atQuit([&isQuitting] {
        const std::lock_guard lock(children().mutex);
        isQuitting = true;
        children().ended.notify_all();
    });
    std::unique_lock lock(children().mutex);
    children().ended.wait(lock, [&] { return isQuitting || !children().running.contains(child); });
}

} // namespace

int OpenTask(const char* path, int argc, const char* const* argv, int) {
    const std::string program = tessaly::base::hostPath(path);
    std::vector<std::string> texts{program};
    for (int i = 0; i < argc && argv[i]; ++i)
        texts.emplace_back(argv[i]);
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (std::string& text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);

    pid_t child = -1;
    const int failure = spawn(child, program, arguments.data());
    if (failure != 0) {
        ts_print_log2(2, __FILE__, __LINE__, __func__, "Can not start %s: %s", program.c_str(),
                      std::strerror(failure));
        return -1;
    }
    {
        const std::lock_guard lock(children().mutex);
        children().running.insert(child);
    }
    std::thread(reap, child).detach();
    return child;
}

int FindTaskByAppName(const char* path) {
    const fs::path wanted = canonicalHostPath(path);
    std::error_code error;
    for (const auto& entry : fs::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename();
        pid_t process = -1;
        if (std::from_chars(name.data(), name.data() + name.size(), process).ec == std::errc() &&
            programOf(process) == wanted)
            return process;
    }
    return -1;
}

int CloseTask(int task, int, int) {
    // A number that another program of the host bears by now must not be hit.
    const std::string programs = canonicalHostPath("/ebrmain/bin").string() + '/';
    if (task <= 0 || !programOf(task).string().starts_with(programs))
        return -1;
    return ::kill(task, SIGTERM) == 0 ? 0 : -1;
}

int NetConnect2(const char*, int) {
    if (GetNetState() == 2)
        return 0;
    if (vellum::clock::isQuitting())
        return -1;
    const char* const arguments[] = {"connect_silent"};
    const int agent = OpenTask("/ebrmain/bin/netagent", 1, arguments, 0);
    if (agent < 0)
        return -1;
    waitForChild(agent);
    return GetNetState() == 2 ? 0 : -1;
}
