#pragma once

#include <base/export.h>

#include <functional>
#include <string>

namespace tessaly::log {

/// The device's log levels; the numbers are those that the printf channel takes.
enum class Level { Error = 1, Warning = 2, Trace = 4, Verbose = 5 };

struct Record {
    Level level = Level::Trace;
    std::string file;
    int line = 0;
    std::string function;
    std::string text;
};

using Listener = std::function<void(const Record&)>;

/// The end of both log channels. Errors and warnings are printed to stderr (or the log file), and each record
/// goes to every listener as it is, on the thread that logs. In print further lines of a text are indented
/// and its length is bounded, so that only records begin a line. A listener must not log. Any thread.
TESSALY_BASE_API void write(const Record& record);

/// Returns the number under which the listener is removed again.
TESSALY_BASE_API int addListener(Listener listener);
TESSALY_BASE_API void removeListener(int number);

/// From now on records are appended to this host file, trace lines included, and no longer printed to stderr.
/// An empty path goes back to stderr. Returns false, and changes nothing, if the file can't be opened.
TESSALY_BASE_API bool setLogFile(const std::string& hostPath);

} // namespace tessaly::log
