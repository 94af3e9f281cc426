#pragma once

#include <vellum/export.h>

#include <functional>
#include <list>

/// The clock behind vl_sleep and the hard timers, which tests and the tour speed up, and the end of all waits
/// at quit. Any thread.
namespace vellum::clock {

/// How many times faster than real time waits pass; 1 is real time.
TESSALY_VELLUM_API void setSpeed(double factor);

/// `milliseconds` at the current speed.
TESSALY_VELLUM_API int scaled(int milliseconds);

/// Ends within a moment whatever blocks a thread on the platform's account, and lets nothing wait again:
/// sleepers wake, NetConnect2 returns without a connection (the network agent goes on by itself), requests
/// and downloads end as cancelled ones do. Called by itself when the application object is about to quit, so
/// that no host has to know of it; a program without one calls it.
TESSALY_VELLUM_API void beginQuit();
TESSALY_VELLUM_API bool isQuitting();

/// For what blocks in another way than vl_sleep: while it lives, beginQuit() calls the function; the
/// constructor does when that has happened already. The function is short and calls nothing of the clock.
///
///     const vellum::clock::OnQuit atQuit([&] { request.cancel(); });
///     request.perform();
class TESSALY_VELLUM_API OnQuit {
public:
    explicit OnQuit(std::function<void()> function);
    /// Afterwards the function is neither called nor still running.
    ~OnQuit();
    OnQuit(const OnQuit&) = delete;
    OnQuit& operator=(const OnQuit&) = delete;

private:
    std::list<std::function<void()>>::iterator m_position;
};

} // namespace vellum::clock
