#pragma once

#include "catalogue/dictionary_record.h"
#include "catalogue/source_info.h"

#include <QJsonArray>
#include <QList>

namespace tessaly::server {

class ServerState;

/// The dictionaries on offer. Unchanging once made.
class Catalogue {
public:
    /// `address` is the server's own ("http://127.0.0.1:8080"). New dictionaries get their numbers from
    /// `state`, which is saved (throws Failure). A damaged source is left out with a line on standard error,
    /// a language that devices can't name unless `allLanguages`.
    Catalogue(const QList<SourceInfo>& sources, ServerState& state, const QString& address,
              bool allLanguages);

    const QList<DictionaryRecord>& records() const { return m_records; }
    /// Null for an unknown number.
    const DictionaryRecord* find(int id) const;

    QJsonArray toJson() const;

private:
    QList<DictionaryRecord> m_records;
};

} // namespace tessaly::server
