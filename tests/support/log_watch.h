#pragma once

#include <base/log_sink.h>

#include <QString>
#include <QStringList>
#include <mutex>
#include <vector>

/// Hears everything that is logged while it lives, on both log channels and by Qt, whose messages become log
/// records; on any thread. A warning or an error that was not announced is a fault: check unexpected() at the
/// end. One at a time.
class LogWatch {
public:
    LogWatch();
    ~LogWatch();
    LogWatch(const LogWatch&) = delete;
    LogWatch& operator=(const LogWatch&) = delete;

    /// Lines that contain this text may come, any number of times.
    void allow(const QString& text);

    /// The texts of all lines that contain `part`, in their order.
    [[nodiscard]] QStringList lines(const QString& part = {}) const;

    /// All that was heard.
    [[nodiscard]] std::vector<tessaly::log::Record> records() const;

    /// Warnings and errors that were not announced; empty is what a test wants.
    [[nodiscard]] QStringList unexpected() const;
    /// The same, and forgets all lines.
    QStringList takeUnexpected();

    void clear();

private:
    mutable std::mutex m_mutex;
    std::vector<tessaly::log::Record> m_records;
    QStringList m_allowed;
    int m_listener = 0;
    QtMessageHandler m_before = nullptr;
};
