#include "packages/dictionary_store.h"

#include "packages/dictionary_converter.h"
#include "support/files.h"

#include <QDebug>
#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <sys/resource.h>
#include <unistd.h>

namespace tessaly::server {

DictionaryStore::DictionaryStore(const QString& directory, const QList<DictionaryRecord>& records)
    : m_directory(directory) {
    makeDirectory(directory);
    QStringList current;
    for (const DictionaryRecord& record : records)
        current << convertedName(record);
    removeOthers(directory, current);
}

QString DictionaryStore::path(const DictionaryRecord& record) const {
    return m_directory + u'/' + convertedName(record);
}

void DictionaryStore::require(QList<DictionaryRecord> records, const std::stop_token& stop) {
    while (!records.isEmpty()) {
        // What nobody is at comes first, so that the others can get on with theirs.
        records.removeIf([this, &stop](const DictionaryRecord& record) { return convert(record, stop); });
        std::unique_lock lock(m_mutex);
        m_hasFinished.wait(lock, stop, [this, &records] {
            return std::all_of(records.begin(), records.end(), [this](const DictionaryRecord& record) {
                return !m_underWay.contains(path(record));
            });
        });
        if (stop.stop_requested())
            throw Failure(QStringLiteral("stopped"));
    }
}

void DictionaryStore::convertAhead(QList<DictionaryRecord> records) {
    std::sort(records.begin(), records.end(),
              [](const DictionaryRecord& a, const DictionaryRecord& b) { return a.size > b.size; });
    m_ahead = std::jthread([this, records](const std::stop_token& stop) {
        constexpr int lowest = 19;
        setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), lowest);
        for (const DictionaryRecord& record : records) {
            try {
                convert(record, stop);
            } catch (const Failure& failure) {
                if (stop.stop_requested())
                    return;
                qWarning().noquote() << record.file << "is not converted:" << failure.message();
            }
        }
    });
}

bool DictionaryStore::convert(const DictionaryRecord& record, const std::stop_token& stop) {
    const QString target = path(record);
    {
        const std::lock_guard lock(m_mutex);
        if (m_underWay.contains(target))
            return false;
        if (QFile::exists(target))
            return true;
        m_underWay.insert(target);
    }
    const auto finish = qScopeGuard([this, &target] {
        {
            const std::lock_guard lock(m_mutex);
            m_underWay.remove(target);
        }
        m_hasFinished.notify_all();
    });
    convertDictionary(record, target, stop);
    return true;
}

} // namespace tessaly::server
