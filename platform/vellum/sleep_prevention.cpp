#include <vellum/sleep_prevention.h>
#include <vellum/vellum.h>

#include <atomic>

namespace {

constexpr unsigned char running = 1;
std::atomic<int> activeCount{0};
std::atomic<int> startedCount{0};

} // namespace

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

int vellum::activeSleepPreventors() {
    return activeCount;
}
int vellum::startedSleepPreventors() {
    return startedCount;
}
