#pragma once

#include <base/export.h>

/// The printf log channel. Level 2 is for errors and warnings, level 4 for trace lines. Any thread.
TESSALY_BASE_API void ts_print_log2(int level, const char* file, int line, const char* function,
                                    const char* format, ...) __attribute__((format(printf, 5, 6)));
