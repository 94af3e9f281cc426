#pragma once

#include <QLatin1String>
#include <cstdint>

namespace tessaly::benchmarks {

/// Shows a document until its first frame and prints the milliseconds since a time of the monotonic clock (in
/// nanoseconds), the peak resident memory in KiB, the rows of a list that the frame showed and the
/// milliseconds of processor time from making the QML engine on. With `needsRows` frames without a row don't
/// count. Returns the exit status.
int showFirstFrame(QLatin1String document, bool needsRows, std::int64_t startNs);

} // namespace tessaly::benchmarks
