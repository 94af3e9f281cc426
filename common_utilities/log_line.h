#pragma once

#include <base/log.h>
#include <vellum/vellum.h>

#include <QString>
#include <sstream>
#include <string>
#include <type_traits>

namespace tessaly {

/// One record of a log channel in one line of code, written when the statement ends. Any thread.
///
///     LogLine(log::cb::warn) << "can not read " << path << ": " << error;
///     LogLine(2) << "can not write `" << name << '`'; // on the printf channel, with its level
///
/// It notes the place that it is written at; of the function that is the bare name, without namespaces and
/// arguments. Where a whole signature is wanted, call the channel itself. The text is put together even if
/// nobody reads the channel: ask for the debug mode before a long one.
class LogLine {
public:
    using Channel = void(const char* file, int line, const char* function, const log::cb::Writer& writer);

    explicit LogLine(Channel& channel, const char* file = __builtin_FILE(), int line = __builtin_LINE(),
                     const char* function = __builtin_FUNCTION())
        : m_channel(&channel)
        , m_file(file)
        , m_line(line)
        , m_function(function) {}

    explicit LogLine(int level, const char* file = __builtin_FILE(), int line = __builtin_LINE(),
                     const char* function = __builtin_FUNCTION())
        : m_level(level)
        , m_file(file)
        , m_line(line)
        , m_function(function) {}

    ~LogLine() {
        const std::string text = m_text.str();
        if (m_channel)
            m_channel(m_file, m_line, m_function,
                      [&](std::ostream& out) -> std::ostream& { return out << text; });
        else
            ts_print_log2(m_level, m_file, m_line, m_function, "%s", text.c_str());
    }
    LogLine(const LogLine&) = delete;
    LogLine& operator=(const LogLine&) = delete;

    template<class T>
    LogLine& operator<<(const T& value) {
        if constexpr (std::is_same_v<T, QString>)
            m_text << value.toStdString();
        else
            m_text << value;
        return *this;
    }

private:
    Channel* const m_channel = nullptr;
    const int m_level = 0; ///< of the printf channel, when there is no other
    const char* const m_file;
    const int m_line;
    const char* const m_function;
    std::ostringstream m_text;
};

} // namespace tessaly
