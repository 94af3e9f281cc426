#include <vellum/clock.h>
#include <vellum/vellum.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace {

struct Clock {
    std::mutex mutex;
    std::condition_variable wake;
    bool awake = false;
    std::vector<int> sleeps;
    std::list<std::function<void()>> wakers;
    std::atomic<double> speed{1.0};
};

Clock& theClock() {
    // Never destroyed: a worker may still sleep while static objects go.
    static auto* const instance = new Clock;
    return *instance;
}

} // namespace

namespace vellum::clock {

void setSpeed(double factor) {
    theClock().speed = factor;
}

void wakeAll() {
    const std::lock_guard lock(theClock().mutex);
    theClock().awake = true;
    theClock().wake.notify_all();
    for (const auto& waker : theClock().wakers)
        waker();
}

void resume() {
    const std::lock_guard lock(theClock().mutex);
    theClock().awake = false;
}

bool isAwake() {
    const std::lock_guard lock(theClock().mutex);
    return theClock().awake;
}

OnWake::OnWake(std::function<void()> function) {
    const std::lock_guard lock(theClock().mutex);
    m_position = theClock().wakers.insert(theClock().wakers.end(), std::move(function));
    if (theClock().awake)
        (*m_position)();
}

OnWake::~OnWake() {
    const std::lock_guard lock(theClock().mutex);
    theClock().wakers.erase(m_position);
}

std::vector<int> takeSleeps() {
    const std::lock_guard lock(theClock().mutex);
    return std::exchange(theClock().sleeps, {});
}

int scaled(int milliseconds) {
    return std::max(0, int(milliseconds / theClock().speed.load()));
}

} // namespace vellum::clock

void vl_sleep(int milliseconds) {
    std::unique_lock lock(theClock().mutex);
    // A long-running process must not collect waits that nobody asks for.
    if (theClock().sleeps.size() < 1000)
        theClock().sleeps.push_back(milliseconds);
    theClock().wake.wait_for(lock, std::chrono::milliseconds(vellum::clock::scaled(milliseconds)),
                             [] { return theClock().awake; });
}
