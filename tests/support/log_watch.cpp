#include "log_watch.h"

#include <algorithm>

using tessaly::log::Level;
using tessaly::log::Record;

namespace {

Level levelOf(QtMsgType type) {
    if (type == QtDebugMsg || type == QtInfoMsg)
        return Level::Trace;
    return type == QtWarningMsg ? Level::Warning : Level::Error;
}

void toLog(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    tessaly::log::write({levelOf(type), context.file ? context.file : "", context.line,
                         context.function ? context.function : "", message.toStdString()});
}

} // namespace

LogWatch::LogWatch()
    : m_listener(tessaly::log::addListener([this](const Record& record) {
        const std::lock_guard lock(m_mutex);
        m_records.push_back(record);
    }))
    , m_before(qInstallMessageHandler(toLog)) {}

LogWatch::~LogWatch() {
    qInstallMessageHandler(m_before);
    tessaly::log::removeListener(m_listener);
}

void LogWatch::allow(const QString& text) {
    const std::lock_guard lock(m_mutex);
    m_allowed.append(text);
}

std::vector<Record> LogWatch::records() const {
    const std::lock_guard lock(m_mutex);
    return m_records;
}

QStringList LogWatch::lines(const QString& part) const {
    const std::lock_guard lock(m_mutex);
    QStringList result;
    for (const Record& record : m_records)
        result.append(QString::fromStdString(record.text));
    return result.filter(part);
}

QStringList LogWatch::unexpected() const {
    const std::lock_guard lock(m_mutex);
    QStringList result;
    for (const Record& record : m_records) {
        const QString text = QString::fromStdString(record.text);
        const bool isAllowed = std::any_of(m_allowed.begin(), m_allowed.end(),
                                           [&](const QString& allowed) { return text.contains(allowed); });
        if (record.level <= Level::Warning && !isAllowed)
            result.append(text);
    }
    return result;
}

QStringList LogWatch::takeUnexpected() {
    const QStringList result = unexpected();
    clear();
    return result;
}

void LogWatch::clear() {
    const std::lock_guard lock(m_mutex);
    m_records.clear();
}
