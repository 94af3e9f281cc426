#pragma once

#include "measurement.h"

namespace tessaly::benchmarks {

/// MB/s of the downloader, checksum included, against the curl program without one: a file of 64 MB from a
/// server in this process. Works in a device root of its own. Throws std::runtime_error if a download fails.
Measurement measureDownload();

} // namespace tessaly::benchmarks
