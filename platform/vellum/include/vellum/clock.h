#pragma once

#include <vellum/export.h>

#include <functional>
#include <list>
#include <vector>

/// The clock behind vl_sleep and the hard timers, which tests can speed up, and the end of all waits at quit.
/// Any thread.
namespace vellum::clock {

/// How many times faster than real time waits pass; 1 is real time.
TESSALY_VELLUM_API void setSpeed(double factor);

/// To be called when the process is about to quit. Ends within a moment whatever blocks a thread on the
/// platform's account, and lets nothing wait again until `resume`: sleepers wake, NetConnect2 returns without
/// a connection (the network agent goes on by itself), requests and downloads end as cancelled ones do.
TESSALY_VELLUM_API void wakeAll();
/// Waits are waits again.
TESSALY_VELLUM_API void resume();
/// Between `wakeAll` and `resume`.
TESSALY_VELLUM_API bool isAwake();

/// For what blocks in another way than vl_sleep: while it lives, wakeAll() calls the function; the
/// constructor does when all are awake already. The function is short and calls nothing of the clock.
class TESSALY_VELLUM_API OnWake {
public:
    explicit OnWake(std::function<void()> function);
    /// Afterwards the function is neither called nor still running.
    ~OnWake();
    OnWake(const OnWake&) = delete;
    OnWake& operator=(const OnWake&) = delete;

private:
    std::list<std::function<void()>>::iterator m_position;
};

/// The waits asked of vl_sleep since the last call, in milliseconds, in the order they began.
TESSALY_VELLUM_API std::vector<int> takeSleeps();

/// `milliseconds` at the current speed.
TESSALY_VELLUM_API int scaled(int milliseconds);

} // namespace vellum::clock
