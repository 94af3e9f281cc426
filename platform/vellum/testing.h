#pragma once

#include <vellum/export.h>

#include <vector>

/// What nobody but a test asks of this library. Any thread.
namespace vellum::testing {

/// The waits asked of vl_sleep since the last call, in milliseconds, in the order they began.
TESSALY_VELLUM_API std::vector<int> takeSleeps();

/// Takes beginQuit() back: waits are waits again.
TESSALY_VELLUM_API void resume();

/// Requests to stay awake that are running, and all that were ever started in this process.
TESSALY_VELLUM_API int activeSleepPreventors();
TESSALY_VELLUM_API int startedSleepPreventors();

} // namespace vellum::testing
