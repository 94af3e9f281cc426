#pragma once

#include <vellum/export.h>

namespace vellum {

/// Requests to stay awake that are running, and all that were ever started in this process.
TESSALY_VELLUM_API int activeSleepPreventors();
TESSALY_VELLUM_API int startedSleepPreventors();

} // namespace vellum
