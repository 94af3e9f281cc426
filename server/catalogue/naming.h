#pragma once

#include <QSet>
#include <QString>

namespace tessaly::server {

/// The two-letter code (ISO 639-1) of a three-letter one, or the code as given where there is none.
QString shortLanguageCode(const QString& threeLetterCode);

/// Whether readers' devices have a name for the language. They can't show one that they can't name.
bool isNamedLanguage(const QString& code);

/// The part of a dictionary's title that tells it from the others, "Czech-English" of "Czech-English FreeDict
/// Dictionary", fit to be a file's name: no slash, nothing that controls or isn't seen, at most 120 bytes.
/// May be empty.
QString readableName(const QString& title);

/// The file name of the dictionary, unlike all in `taken` (a letter's case makes no difference), where it is
/// put. `code` tells apart dictionaries of the same title.
QString uniqueFileName(const QString& title, const QString& code, QSet<QString>& taken);

/// What tells the dictionary from others of the same two languages, whose categories are in `taken`: the
/// source that its title names ("FreeDict"), else the title; with `code` where that isn't enough.
QString uniqueCategory(const QString& title, const QString& code, QSet<QString>& taken);

} // namespace tessaly::server
