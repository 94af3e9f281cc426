#include "log_watch.h"

#include <algorithm>
#include <atomic>

namespace {
std::atomic<LogWatch*> current{nullptr};
}

LogWatch::LogWatch()
    : m_listener(tessaly::log::addListener([this](const tessaly::log::Record& record) {
        take({record.level <= tessaly::log::Level::Warning, record});
    }))
    , m_before(qInstallMessageHandler(handleQtMessage)) {
    current = this;
}

LogWatch::~LogWatch() {
    current = nullptr;
    qInstallMessageHandler(m_before);
    tessaly::log::removeListener(m_listener);
}

void LogWatch::handleQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    LogWatch* const watch = current;
    if (!watch)
        return;
    const bool isAlarming = type != QtDebugMsg && type != QtInfoMsg;
    watch->take({isAlarming,
                 {isAlarming ? tessaly::log::Level::Warning : tessaly::log::Level::Trace,
                  context.file ? context.file : "", context.line, context.function ? context.function : "",
                  message.toStdString()}});
    if (watch->m_before && isAlarming)
        watch->m_before(type, context, message);
}

void LogWatch::take(const Line& line) {
    const std::lock_guard lock(m_mutex);
    m_lines.push_back(line);
}

void LogWatch::allow(const QString& text) {
    const std::lock_guard lock(m_mutex);
    m_allowed.append(text);
}

std::vector<LogWatch::Line> LogWatch::records(const QString& part) const {
    const std::lock_guard lock(m_mutex);
    std::vector<Line> result;
    std::copy_if(m_lines.begin(), m_lines.end(), std::back_inserter(result),
                 [&](const Line& line) { return QString::fromStdString(line.record.text).contains(part); });
    return result;
}

QStringList LogWatch::lines(const QString& part) const {
    QStringList result;
    for (const Line& line : records(part))
        result.append(QString::fromStdString(line.record.text));
    return result;
}

QStringList LogWatch::unexpected() const {
    QStringList result;
    for (const Line& line : records()) {
        const QString text = QString::fromStdString(line.record.text);
        const std::lock_guard lock(m_mutex);
        const bool isAllowed = std::any_of(m_allowed.begin(), m_allowed.end(),
                                           [&](const QString& allowed) { return text.contains(allowed); });
        if (line.isAlarming && !isAllowed)
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
    m_lines.clear();
}
