#pragma once

#include <QString>

namespace tessaly::server {

/// The two-letter code (ISO 639-1) of a three-letter one, or the code as given where there is none.
QString shortLanguageCode(const QString& threeLetterCode);

/// Whether readers' devices have a name for the language. They can't show one that they can't name.
bool isNamedLanguage(const QString& code);

} // namespace tessaly::server
