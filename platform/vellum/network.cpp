#include "tasks.h"

#include <vellum/clock.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

int GetNetState() {
    return vellum::state::netState();
}

int NetConnect2(const char*, int) {
    if (GetNetState() == 2)
        return 0;
    if (vellum::clock::isAwake() || !vellum::state::isNetworkReachable())
        return -1;
    const char* const arguments[] = {"connect_silent"};
    const int agent = OpenTask("/ebrmain/bin/netagent", 1, arguments, 0);
    if (agent < 0)
        return -1;
    vellum::waitForTask(agent);
    return GetNetState() == 2 ? 0 : -1;
}
