#pragma once

#include <functional>

namespace tessaly::simulator {

/// Runs `work` in a child process and leaves no process of it behind, however it ends: whatever its
/// descendants started becomes a child of this process and is ended.
///
/// Two keepers stand around the work, each the other's safety: the one that the user started, and one between
/// it and the work. Whichever of the three is killed, one that remains ends the rest.
///
/// SIGTERM, SIGINT and SIGHUP end the work as SIGTERM; if it doesn't follow within seconds it is killed.
/// SIGUSR1 is a power cut: everything below is killed at once, and the work begins again. The work sends it
/// to its parent.
///
/// Returns what the work returned, or 128 and the number of the signal that ended it. Throws
/// std::system_error if no process can be started. Call it before the process has any other thread.
int keep(const std::function<int()>& work);

} // namespace tessaly::simulator
