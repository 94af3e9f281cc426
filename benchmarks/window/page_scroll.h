#pragma once

namespace tessaly::benchmarks {

/// Turns pages of the interface's list and of a plain one with as many rows to a page, in turns, by the page
/// key; prints the least milliseconds of processor time from the key to the rendered frame for each list.
/// Returns the exit status.
int scrollPages();

} // namespace tessaly::benchmarks
