#pragma once

#include <QString>
#include <functional>

namespace tessaly::tour {

/// Runs the event loop until `holds`, looking every few milliseconds; StepFailed with `what` after
/// `timeoutMs`.
void waitUntil(const std::function<bool()>& holds, const QString& what, int timeoutMs = 30000);

/// How much faster than on a device the product's waits for server and installer pass: nobody watches.
constexpr double clockSpeed = 20;

} // namespace tessaly::tour
