#pragma once

#include <QLatin1String>

namespace tessaly::benchmarks {

/// Hides the interface and shows it again with nothing changed. Prints milliseconds of processor time until
/// its first frame with rows, and until that of the second showing. Returns the exit status.
int showAgain();

/// Uses the interface by touch or by keys: for more dictionaries, marks two, turns a page and back, looks at
/// one's information, and leaves. Prints the frames that changed something on the screen, the changes that
/// this ought to take, the frames that changed nothing, the area that a mark changed and that of its row and
/// of the button, and the area that a page changed and that of the list. Returns the exit status.
int playJourney(bool touch);

/// Prints the frames and the wake-ups of ten seconds in which nobody does anything. Returns the exit status.
int stayIdle();

} // namespace tessaly::benchmarks
