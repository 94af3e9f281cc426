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

/// Milliseconds of processor time from the start of the program's main() to that frame, likewise.
Measurement measureColdStart();

/// Milliseconds of processor time until the hidden interface shows its rows again, against the first time.
Measurement measureFirstFrameAgain();

/// Milliseconds of processor time, of the median page, from the page key to the frame with the next page,
/// against a plain list of two-line texts; and until the program is idle again.
Measurement measurePageLatency();
Measurement measurePageScroll();

// A journey through the interface by touch and one by keys: that with the higher figure.

/// Frames that change something on the screen, against the changes that the user's steps ought to take.
Measurement measureScreenUpdates();
/// Frames that change nothing, against the same.
Measurement measureUnchangedFrames();
/// Pixels that change when one dictionary is marked, against those of its row and of the button that counts
/// the marks; and when a page turns, against those of the list.
Measurement measureMarkArea();
Measurement measurePageArea();

/// Frames and wake-ups in ten seconds in which nobody does anything, against these.
Measurement measureIdle();

} // namespace tessaly::benchmarks
