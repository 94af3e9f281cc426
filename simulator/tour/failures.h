#pragma once

#include "step_log.h"

namespace tessaly::fixture {
class TestDevice;
}

namespace tessaly::tour {

/// Everything that can go wrong with a download, one step each. Each leaves the device as it was.
void playFailures(fixture::TestDevice& device, StepLog& log);

} // namespace tessaly::tour
