#pragma once

#include <vellum/export.h>

#include <vector>

/// The clock behind vl_sleep and the hard timers, which tests can speed up. Any thread.
namespace vellum::clock {

/// How many times faster than real time waits pass; 1 is real time.
TESSALY_VELLUM_API void setSpeed(double factor);

/// Wakes every sleeper, and lets none sleep again until `resume`. To be called when the process is about to
/// quit.
TESSALY_VELLUM_API void wakeAll();
TESSALY_VELLUM_API void resume();

/// The waits asked of vl_sleep since the last call, in milliseconds, in the order they began.
TESSALY_VELLUM_API std::vector<int> takeSleeps();

/// `milliseconds` at the current speed.
TESSALY_VELLUM_API int scaled(int milliseconds);

} // namespace vellum::clock
