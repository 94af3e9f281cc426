#include <base/log.h>
#include <base/log_sink.h>

#include <cstdarg>
#include <cstdio>
#include <sstream>

namespace tessaly {

namespace {

using log::Level;

Level levelFromNumber(int number) {
    if (number <= int(Level::Error))
        return Level::Error;
    if (number == int(Level::Warning))
        return Level::Warning;
    return number <= int(Level::Trace) ? Level::Trace : Level::Verbose;
}

void writeRecord(Level level, const char* file, int line, const char* function,
                 const log::cb::Writer& writer) {
    std::ostringstream text;
    writer(text);
    log::write({level, file, line, function, text.str()});
}

} // namespace

namespace log::cb {

void error(const char* file, int line, const char* function, const Writer& writer) {
    writeRecord(Level::Error, file, line, function, writer);
}

void warn(const char* file, int line, const char* function, const Writer& writer) {
    writeRecord(Level::Warning, file, line, function, writer);
}

void trace(const char* file, int line, const char* function, const Writer& writer) {
    writeRecord(Level::Trace, file, line, function, writer);
}

void verbose(const char* file, int line, const char* function, const Writer& writer) {
    writeRecord(Level::Verbose, file, line, function, writer);
}

} // namespace log::cb

namespace ansicolor {

std::string beginSeq(unsigned char target, unsigned char mode, unsigned int color, unsigned char attribute) {
    std::ostringstream sequence;
    sequence << "\033[";
    if (attribute)
        sequence << int(attribute) << ';';
    sequence << int(target) << ';' << int(mode) << ';' << ((color >> 16) & 0xFF) << ';'
             << ((color >> 8) & 0xFF) << ';' << (color & 0xFF) << 'm';
    return sequence.str();
}

} // namespace ansicolor

} // namespace tessaly

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
    tessaly::log::write({tessaly::levelFromNumber(level), file, line, function, text});
}
