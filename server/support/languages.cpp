#include "support/languages.h"

#include <QLocale>
#include <QSet>

namespace tessaly::server {

QString shortLanguageCode(const QString& threeLetterCode) {
    const QLocale::Language language = QLocale::codeToLanguage(threeLetterCode);
    // Devices know these two by the code of the wider language.
    if (language == QLocale::NorwegianBokmal)
        return QStringLiteral("no");
    if (language == QLocale::Filipino || threeLetterCode == u"tgl")
        return QStringLiteral("tl");
    const QString code = QLocale::languageToCode(language, QLocale::ISO639Part1);
    return code.isEmpty() ? threeLetterCode : code;
}

bool isNamedLanguage(const QString& code) {
    static const QStringList list =
        QStringLiteral(
            "en de fr es it pt ru zh ja ko ar hi bn pa ur fa tr vi ms th nl pl sv no da fi el he hu cs ro "
            "bg sr hr sk lt lv et id tl uk ca is ga mt sl hy az")
            .split(u' ');
    static const QSet<QString> named(list.begin(), list.end());
    return named.contains(code);
}

} // namespace tessaly::server
