#include <base/log_print.h>
#include <base/log_sink.h>

#include <cstdarg>
#include <cstdio>
#include <string>

using tessaly::log::Level;

namespace {

Level levelFromNumber(int number) {
    if (number <= int(Level::Error))
        return Level::Error;
    if (number == int(Level::Warning))
        return Level::Warning;
    return number <= int(Level::Trace) ? Level::Trace : Level::Verbose;
}

} // namespace

void ts_print_log2(int level, const char* file, int line, const char* function, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? std::size_t(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    tessaly::log::write({levelFromNumber(level), file, line, function, text});
}
