#include <base/log_sink.h>

#include <cstdio>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>

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

constexpr std::size_t longestText = 16'000;

/// The length of a sequence that sets a colour and begins here; 0 if there is none.
std::size_t colourLength(std::string_view text) {
    if (!text.starts_with("\033["))
        return 0;
    const auto end = text.find_first_not_of("0123456789;", 2);
    return end != std::string_view::npos && text[end] == 'm' ? end + 1 : 0;
}

/// No text from outside that a record quotes may pose as the next record, or fill the disk: further lines are
/// indented, other control characters are blanks, and the end of a long text is left out.
std::string printable(std::string_view text) {
    std::string result;
    const std::string_view shown = text.substr(0, longestText);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (const std::size_t length = colourLength(shown.substr(i)); length > 0) {
            result += shown.substr(i, length);
            i += length - 1;
        } else if (shown[i] == '\n') {
            result += "\n    ";
        } else {
            const bool isControl = static_cast<unsigned char>(shown[i]) < ' ' || shown[i] == '\x7F';
            result += isControl ? ' ' : shown[i];
        }
    }
    if (text.size() > shown.size())
        result += "... (" + std::to_string(text.size() - shown.size()) + " more bytes)";
    return result;
}

} // namespace

void write(const Record& record) {
    const std::lock_guard lock(sink().mutex);
    std::FILE* const out = sink().file ? sink().file.get() : stderr;
    if (sink().file || record.level <= Level::Warning) {
        std::fprintf(out, "[%s] %s:%d %s: %s\n", levelName(record.level), record.file.c_str(), record.line,
                     record.function.c_str(), printable(record.text).c_str());
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
