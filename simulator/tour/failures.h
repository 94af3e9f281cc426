#pragma once

#include "hand.h"
#include "step_log.h"

namespace tessaly::fixture {
class TestDevice;
}

namespace tessaly::tour {

/// Downloads that come to nothing: what the user sees of each, and that the device is as it was.
void playFailures(fixture::TestDevice& device, const Hand& hand, StepLog& log);

} // namespace tessaly::tour
