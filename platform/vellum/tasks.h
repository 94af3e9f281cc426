#pragma once

namespace vellum {

/// Blocks until a task that this process started has ended.
void waitForTask(int task);

} // namespace vellum
