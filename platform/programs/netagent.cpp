// The device's network agent: brings the device online if a network is in reach.

#include <vellum/device_state.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

int main(int argc, char** argv) {
    if (argc != 2 || std::strcmp(argv[1], "connect_silent") != 0) {
        std::fprintf(stderr, "usage: netagent connect_silent\n");
        return 2;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(vellum::state::connectDelayMs()));
    if (!vellum::state::isNetworkReachable())
        return 1;
    vellum::state::setNetState(2);
    return 0;
}
