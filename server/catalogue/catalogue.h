#pragma once

#include <QJsonObject>
#include <QList>

namespace tessaly::server {

class ServerState;

/// A dictionary on offer, with everything that the catalogue says of it and where it is made from.
struct DictionaryRecord {
    int id = 0;
    QString name;
    QString file; ///< name of the dictionary's file on a device
    int version = 1;
    QString languageFrom; ///< two-letter code, or empty
    QString languageTo;
    QString thumbnail; ///< URL of the cover
    QString description;
    QString category;
    QString provider;
    QString publishDate; ///< YYYY-MM-DD, or empty
    QString set;
    qint64 size = 0; ///< bytes to be downloaded, estimated

    QString indexPath;   ///< the dictd index that it is made from
    QString sourceStamp; ///< changes when the dictd files do

    QJsonObject toJson() const;
    /// A PNG of 300 x 400 pixels in shades of grey, for e-paper.
    QByteArray cover() const;
};

/// The dictionaries on offer. Unchanging once made.
class Catalogue {
public:
    /// Reads the FreeDict dictionaries in a directory. `url` is the server's own ("http://127.0.0.1:8080").
    /// New dictionaries get their numbers from `state`, which is saved (throws Failure). A damaged one is
    /// left out with a line on standard error, a language that devices can't name unless `allLanguages`.
    Catalogue(const QString& directory, ServerState& state, const QString& url, bool allLanguages);

    const QList<DictionaryRecord>& records() const { return m_records; }
    /// Null for an unknown number.
    const DictionaryRecord* find(int id) const;

private:
    QList<DictionaryRecord> m_records;
};

} // namespace tessaly::server
