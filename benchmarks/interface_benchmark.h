#pragma once

#include "measurement.h"

namespace tessaly::benchmarks {

// Of the dictionaries interface with 500 installed dictionaries, without a display (software renderer); less
// is better. References are of the same kind, in the same setting.

/// Milliseconds from the start of a process to the first frame that shows rows, loading the plugin and
/// reading the catalogue included, against a process that shows an empty QML window.
Measurement measureFirstFrame();

/// Peak resident memory of the same processes up to then, in KiB.
Measurement measureMemory();

/// Milliseconds of processor time from the page key to the frame with the next page, against a plain list of
/// two-line texts.
Measurement measurePageScroll();

} // namespace tessaly::benchmarks
