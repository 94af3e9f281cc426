#pragma once

#include <QJsonObject>
#include <QString>

namespace tessaly::server {

/// A dictionary on offer, with everything that the catalogue says of it and where it is made from.
struct DictionaryRecord {
    int id = 0;
    QString name;
    QString file; ///< name of the dictionary's file on a device
    int version = 1;
    QString languageFrom; ///< two-letter code, or empty
    QString languageTo;
    QString thumbnail; ///< address of the cover
    QString description;
    QString category;
    QString provider;
    QString publishDate; ///< YYYY-MM-DD, or empty
    QString set;
    qint64 size = 0; ///< bytes to be downloaded, estimated

    QString indexPath;   ///< the dictd index that it is made from
    QString sourceStamp; ///< changes when the dictd files do

    QJsonObject toJson() const;
};

} // namespace tessaly::server
