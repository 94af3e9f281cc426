#pragma once

#include <sys/types.h>

namespace tessaly::server {

/// Makes SIGTERM and SIGINT end the event loop instead of the process. In two steps, because threads inherit
/// what is blocked at their start: block before the first thread starts, quit once there is an application.
void blockEndSignals();
void quitOnEndSignals();

/// Has the kernel send SIGTERM when the starting process ends. `parent` is its id as read first thing at
/// start; false if it has ended already.
bool endWithParent(pid_t parent);

} // namespace tessaly::server
