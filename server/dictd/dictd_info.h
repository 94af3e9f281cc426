#pragma once

#include <QString>

namespace tessaly::server {

/// What a FreeDict dictionary says about itself, picked out of its own texts.
struct DictdInfo {
    QString title;
    int version = 1;     ///< 203 for edition 0.2.3, 20221118 for 2022.11.18, 1 for anything else
    QString provider;    ///< may be empty
    QString publishDate; ///< YYYY-MM-DD, or empty
    QString description; ///< paragraphs, an empty line between each two
};

/// `shortText` and `infoText` are the dictionary's entries of the names "short" and "info".
DictdInfo parseDictdInfo(const QString& shortText, const QString& infoText);

} // namespace tessaly::server
