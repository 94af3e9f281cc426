#pragma once

#include <QSet>
#include <QString>

namespace tessaly::server {

/// The part of a dictionary's title that tells it from the others, "Czech-English" of "Czech-English FreeDict
/// Dictionary", fit to be a file's name: no slash, no control characters, at most 120 bytes. May be empty.
QString readableName(const QString& title);

/// The file name of the dictionary, unlike all in `taken` (a letter's case makes no difference), where it is
/// put. `code` tells apart dictionaries of the same title.
QString uniqueFileName(const QString& title, const QString& code, QSet<QString>& taken);

} // namespace tessaly::server
