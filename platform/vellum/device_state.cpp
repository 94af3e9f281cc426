#include <vellum/device_state.h>

#include "config_file.h"

#include <base/device_root.h>
#include <base/log.h>
#include <vellum/vellum.h>

#include <charconv>
#include <fcntl.h>
#include <ostream>
#include <sys/file.h>
#include <unistd.h>

namespace vellum::state {

namespace {

constexpr auto statePath = "/var/device_state.cfg";
constexpr auto networkReachable = "network_reachable";
constexpr auto netStateKey = "net_state";
constexpr auto connectDelay = "connect_delay_ms";
constexpr auto secureFree = "secure_free_bytes";
constexpr auto debugMode = "debug_mode";
constexpr auto inputKey = "input";
constexpr auto screenKey = "screen";
constexpr auto languageKey = "language";

ConfigFile load() {
    return ConfigFile::load(tessaly::base::hostPath(statePath));
}

/// Keeps two processes from changing the file at the same time, so that neither loses the other's change.
class FileLock {
public:
    explicit FileLock(const std::string& path)
        : m_file(::open((path + ".lock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0644)) {
        if (m_file >= 0)
            ::flock(m_file, LOCK_EX);
    }
    ~FileLock() {
        if (m_file >= 0)
            ::close(m_file);
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    int m_file;
};

void store(const char* key, const std::string& value) {
    const std::string path = tessaly::base::hostPath(statePath);
    const FileLock lock(path);
    ConfigFile config = ConfigFile::load(path);
    config.setValue(key, value);
    if (!config.save(path)) {
        tessaly::log::cb::error(__FILE__, __LINE__, __func__, [&](std::ostream& out) -> std::ostream& {
            return out << "Can not write the device state " << path;
        });
    }
}

} // namespace

bool isNetworkReachable() {
    return load().intValue(networkReachable, 0) != 0;
}

void setNetworkReachable(bool reachable) {
    store(networkReachable, reachable ? "1" : "0");
    if (!reachable)
        setNetState(0);
}

int netState() {
    return load().intValue(netStateKey, 0);
}
void setNetState(int state) {
    store(netStateKey, std::to_string(state));
}

int connectDelayMs() {
    return load().intValue(connectDelay, 0);
}
void setConnectDelayMs(int milliseconds) {
    store(connectDelay, std::to_string(milliseconds));
}

std::int64_t secureFreeBytes() {
    const std::string text = load().value(secureFree).value_or("-1");
    std::int64_t bytes = -1;
    std::from_chars(text.data(), text.data() + text.size(), bytes);
    return bytes;
}
void setSecureFreeBytes(std::int64_t bytes) {
    store(secureFree, std::to_string(bytes));
}

bool isDebugMode() {
    return load().intValue(debugMode, 0) != 0;
}
void setDebugMode(bool on) {
    store(debugMode, on ? "1" : "0");
}

Input input() {
    return load().value(inputKey).value_or("touch") == "keys" ? Input::Keys : Input::Touch;
}
void setInput(Input input) {
    store(inputKey, input == Input::Keys ? "keys" : "touch");
}

std::string screen() {
    return load().value(screenKey).value_or("758x1024");
}
void setScreen(const std::string& size) {
    store(screenKey, size);
}

std::string language() {
    return load().value(languageKey).value_or("en");
}
void setLanguage(const std::string& code) {
    store(languageKey, code);
}

} // namespace vellum::state

bool vl_debug_mode() {
    return vellum::state::isDebugMode();
}
