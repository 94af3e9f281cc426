#pragma once

namespace vellum {

/// Blocks until a task that this process started has ended, or the process is about to quit.
void waitForTask(int task);

} // namespace vellum
