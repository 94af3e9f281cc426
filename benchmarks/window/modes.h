#pragma once

#include <QLatin1String>
#include <cstdint>

/// What the program can do with a window. Functions return the exit status.
namespace tessaly::benchmarks {

/// Shows a document until its first frame and prints the milliseconds since a time of the monotonic clock (in
/// nanoseconds), the peak resident memory in KiB, the rows of a list that the frame showed and the
/// milliseconds of processor time from making the QML engine on. With `needsRows` it isn't the first frame
/// until it shows a row.
int showFirstFrame(QLatin1String document, bool needsRows, std::int64_t startNs);

/// Turns pages of the interface's list and of a plain one with as many rows to a page, in turns, by the page
/// key. Prints milliseconds of processor time of the median page: until the frame, then until the program is
/// idle again; ours and the plain list's each.
int scrollPages();

/// Hides the interface and shows it again with nothing changed. Prints milliseconds of processor time until
/// its first frame with rows, and until that of the second showing.
int showAgain();

/// Uses the interface by touch or by keys: for more dictionaries, marks two, turns a page and back, looks at
/// one's information, and leaves. Prints the frames that changed something on the screen, the changes that
/// this ought to take, the frames that changed nothing, the area that a mark changed and that of its row and
/// of the button, and the area that a page changed and that of the list.
int playJourney(bool touch);

/// Prints the frames and the wake-ups of ten seconds in which nobody does anything.
int stayIdle();

} // namespace tessaly::benchmarks
