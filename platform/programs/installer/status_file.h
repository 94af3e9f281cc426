#pragma once

#include "failure.h"

#include <chrono>

namespace tessaly::installer {

/// The small file from which others learn how far the run is ("progress", 0 to 100) and how it ended
/// ("out_code"). Readers always find a whole file; 100 never stands there without the result beside it, and
/// after a failure not at all. Belongs to the one installer that runs.
class StatusFile {
public:
    /// Says that a run has begun. Throws a Failure with StatusUnwritable if that can't be written.
    void begin();

    /// 0 to 99. Written a few times a second at most: readers look less often, each write waits for the disk.
    void setProgress(int percent);

    /// Throws like begin().
    void succeed();

    /// Tells the code if the file can be written at all.
    void fail(Code code) noexcept;

private:
    void write(Code code, int progress);

    int m_progress = 0;
    std::chrono::steady_clock::time_point m_written;
};

} // namespace tessaly::installer
