#include <vellum/device_state.h>

#include "config_file.h"
#include "testing.h"

#include <base/device_root.h>
#include <base/file.h>
#include <vellum/vellum.h>

#include <atomic>
#include <charconv>
#include <fcntl.h>
#include <sys/file.h>

namespace vellum::state {

namespace {

namespace base = tessaly::base;

constexpr auto statePath = "/var/device_state.cfg";
constexpr auto networkReachable = "network_reachable";
constexpr auto netStateKey = "net_state";
constexpr auto connectDelay = "connect_delay_ms";
constexpr auto noticeKey = "network_notice";
constexpr auto secureFree = "secure_free_bytes";
constexpr auto debugMode = "debug_mode";
constexpr auto inputKey = "input";
constexpr auto screenKey = "screen";
constexpr auto languageKey = "language";

ConfigFile load() {
    return ConfigFile::load(base::hostPath(statePath));
}

void store(const char* key, const std::string& value) {
    const std::string path = base::hostPath(statePath);
    // Two processes that change the file at the same time would lose the change of one.
    const base::FileDescriptor lock(::open((path + ".lock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0644));
    ::flock(lock.get(), LOCK_EX);
    ConfigFile config = ConfigFile::load(path);
    config.setValue(key, value);
    if (!config.save(path))
        ts_print_log2(2, __FILE__, __LINE__, __func__, "Can not write the device state %s", path.c_str());
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

NetworkNotice networkNotice() {
    const int notice = load().intValue(noticeKey, 0);
    return notice == 1   ? NetworkNotice::Connecting
           : notice == 2 ? NetworkNotice::NoNetwork
                         : NetworkNotice::None;
}
void setNetworkNotice(NetworkNotice notice) {
    store(noticeKey, std::to_string(int(notice)));
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

namespace {

constexpr unsigned char running = 1;
std::atomic<int> activeCount{0};
std::atomic<int> startedCount{0};

} // namespace

int vellum::testing::activeSleepPreventors() {
    return activeCount;
}
int vellum::testing::startedSleepPreventors() {
    return startedCount;
}

void vl_sleep_preventor_start(vl_sleep_preventor* preventor) {
    if (preventor->state == running)
        return;
    preventor->state = running;
    ++activeCount;
    ++startedCount;
}

void vl_sleep_preventor_stop(vl_sleep_preventor* preventor) {
    if (preventor->state != running)
        return;
    preventor->state = 0;
    --activeCount;
}

int GetNetState() {
    return vellum::state::netState();
}

bool vl_debug_mode() {
    return vellum::state::isDebugMode();
}
