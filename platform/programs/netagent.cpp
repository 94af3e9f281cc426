// The device's network agent: brings the device online if a network is in reach. What takes long, or fails,
// it says through the device's state, which the screen shows.

#include <vellum/device_state.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

namespace state = vellum::state;
using state::NetworkNotice;

constexpr int quietMs = 500; ///< what takes no longer than this would only flicker on the display

/// False if the agent is to end.
bool wait(int milliseconds) {
    sigset_t end;
    sigemptyset(&end);
    sigaddset(&end, SIGTERM);
    ::sigprocmask(SIG_BLOCK, &end, nullptr);
    const timespec time = {milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    return ::sigtimedwait(&end, nullptr, &time) != SIGTERM;
}

/// Takes as long as the device's state says.
NetworkNotice connect() {
    if (!state::isNetworkReachable())
        return NetworkNotice::NoNetwork;
    const int delay = state::connectDelayMs();
    const int quiet = std::min(delay, quietMs);
    if (!wait(quiet))
        return NetworkNotice::None;
    if (delay > quiet) {
        state::setNetworkNotice(NetworkNotice::Connecting);
        if (!wait(delay - quiet))
            return NetworkNotice::None;
    }
    if (!state::isNetworkReachable())
        return NetworkNotice::NoNetwork;
    state::setNetState(2);
    return NetworkNotice::None;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 || std::strcmp(argv[1], "connect_silent") != 0) {
        std::fprintf(stderr, "usage: netagent connect_silent\n");
        return 2;
    }
    state::setNetworkNotice(connect());
    return state::netState() == 2 ? 0 : 1;
}
