#pragma once

#include "catalogue/catalogue.h"

#include <QSet>

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace tessaly::server {

/// The converted dictionaries, kept in a directory from run to run. For any thread.
class DictionaryStore {
public:
    /// Makes the directory (throws Failure) and clears it of what no longer belongs to one of `records`.
    DictionaryStore(const QString& directory, const QList<DictionaryRecord>& records);

    /// Converts those of the dictionaries that aren't yet, and waits for those that another thread is at.
    /// Throws Failure, also when asked to stop.
    void require(QList<DictionaryRecord> records, const std::stop_token& stop);
    /// Where the conversion is kept.
    QString path(const DictionaryRecord& record) const;

    /// Converts all of them, the largest first, on a thread of its own that leaves the processor to whoever
    /// else wants it. It never holds up require() for longer than the dictionary that it is at.
    void convertAhead(QList<DictionaryRecord> records);

private:
    /// False, at once, if another thread is at it.
    bool convert(const DictionaryRecord& record, const std::stop_token& stop);

    const QString m_directory;
    std::mutex m_mutex;
    std::condition_variable_any m_hasFinished;
    QSet<QString> m_underWay; ///< paths
    std::jthread m_ahead;     ///< last, so that it ends first
};

} // namespace tessaly::server
