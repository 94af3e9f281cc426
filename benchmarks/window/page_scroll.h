#pragma once

namespace tessaly::benchmarks {

/// Turns pages of the interface's list and of a plain one with as many rows to a page, in turns, by the page
/// key. Prints milliseconds of processor time of the median page: until the frame, then until the program is
/// idle again; ours and the plain list's each. Returns the exit status.
int scrollPages();

} // namespace tessaly::benchmarks
