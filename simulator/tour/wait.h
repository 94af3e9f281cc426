#pragma once

#include <QString>
#include <functional>

namespace tessaly::tour {

/// Runs the event loop until `holds`, looking every few milliseconds; StepFailed with `what` after
/// `timeoutMs`.
void waitUntil(const std::function<bool()>& holds, const QString& what, int timeoutMs = 30000);

} // namespace tessaly::tour
