#include <base/log_sink.h>

#include <cstdio>
#include <map>
#include <memory>
#include <mutex>

namespace tessaly::log {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

struct Sink {
    std::mutex mutex;
    std::map<int, Listener> listeners;
    int lastNumber = 0;
    std::unique_ptr<std::FILE, CloseFile> file;
};

Sink& sink() {
    // Never destroyed: records may still come from static destructors and detached threads.
    static auto* const instance = new Sink;
    return *instance;
}

const char* levelName(Level level) {
    switch (level) {
    case Level::Error:
        return "error";
    case Level::Warning:
        return "warning";
    case Level::Trace:
        return "trace";
    case Level::Verbose:
        return "verbose";
    }
    return "?";
}

} // namespace

void write(const Record& record) {
    const std::lock_guard lock(sink().mutex);
    std::FILE* const out = sink().file ? sink().file.get() : stderr;
    if (sink().file || record.level <= Level::Warning) {
        std::fprintf(out, "[%s] %s:%d %s: %s\n", levelName(record.level), record.file.c_str(), record.line,
                     record.function.c_str(), record.text.c_str());
        std::fflush(out);
    }
    for (const auto& [number, listener] : sink().listeners)
        listener(record);
}

int addListener(Listener listener) {
    const std::lock_guard lock(sink().mutex);
    sink().listeners.emplace(++sink().lastNumber, std::move(listener));
    return sink().lastNumber;
}

void removeListener(int number) {
    const std::lock_guard lock(sink().mutex);
    sink().listeners.erase(number);
}

bool setLogFile(const std::string& hostPath) {
    std::unique_ptr<std::FILE, CloseFile> file;
    if (!hostPath.empty()) {
        file.reset(std::fopen(hostPath.c_str(), "ae"));
        if (!file)
            return false;
    }
    const std::lock_guard lock(sink().mutex);
    sink().file = std::move(file);
    return true;
}

} // namespace tessaly::log
