#include <base/log.h>
#include <base/log_sink.h>

#include <sstream>

namespace tessaly {

namespace log::cb {

namespace {

void writeRecord(Level level, const char* file, int line, const char* function, const Writer& writer) {
    std::ostringstream text;
    writer(text);
    log::write({level, file, line, function, text.str()});
}

} // namespace

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
