#pragma once

#include "measurement.h"

namespace tessaly::benchmarks {

/// Seconds that the installer takes for a package of 16 dictionaries, checks and syncing included, against
/// unpacking the same archive with bsdtar and summing its files with sha256sum. Less is better. Works in a
/// device of its own. Throws std::runtime_error if either fails.
Measurement measureInstall();

} // namespace tessaly::benchmarks
