#pragma once

#include <base/export.h>

#include <functional>
#include <iosfwd>
#include <string>

/// The printf log channel. Level 2 is for errors and warnings, level 4 for trace lines. Any thread.
TESSALY_BASE_API void ts_print_log2(int level, const char* file, int line, const char* function,
                                    const char* format, ...) __attribute__((format(printf, 5, 6)));

namespace tessaly {

namespace log::cb {

using Writer = std::function<std::ostream&(std::ostream&)>;

/// The structured log channel: the writer streams the text of one record. Any thread.
TESSALY_BASE_API void error(const char* file, int line, const char* function, const Writer& writer);
TESSALY_BASE_API void warn(const char* file, int line, const char* function, const Writer& writer);
TESSALY_BASE_API void trace(const char* file, int line, const char* function, const Writer& writer);
TESSALY_BASE_API void verbose(const char* file, int line, const char* function, const Writer& writer);

} // namespace log::cb

namespace ansicolor {

/// The terminal escape sequence that starts a 24-bit colour: `target` 38 is the foreground, 48 the
/// background, `mode` 2 says that a colour value 0xRRGGBB follows; `attribute` (1 is bold) comes first, 0
/// means none.
TESSALY_BASE_API std::string beginSeq(unsigned char target, unsigned char mode, unsigned int color,
                                      unsigned char attribute);

} // namespace ansicolor

} // namespace tessaly
