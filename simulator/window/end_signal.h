#pragma once

namespace tessaly::simulator {

/// Has SIGTERM, SIGINT and SIGHUP end the event loop instead of the process. They aren't blocked: programs
/// that the process starts would inherit that. Once, when there is an application object.
void quitOnEndSignals();

} // namespace tessaly::simulator
