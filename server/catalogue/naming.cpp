#include "catalogue/naming.h"

#include <QLocale>
#include <QRegularExpression>

namespace tessaly::server {

namespace {

const QRegularExpression sourceName(QStringLiteral("\\s*\\(?\\b((?:FreeDict|WikDict)\\b\\S*).*$"),
                                    QRegularExpression::CaseInsensitiveOption |
                                        QRegularExpression::DotMatchesEverythingOption);

} // namespace

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

QString readableName(const QString& title) {
    // Characters of the last kind take no room, and most turn the reading direction or join letters.
    static const QRegularExpression unfit(
        QStringLiteral("[/\\\\:*?\"<>|\\p{C}\\p{Default_Ignorable_Code_Point}]"));
    static const QRegularExpression spacedDash(QStringLiteral("\\s+-\\s+"));
    QString name = title.normalized(QString::NormalizationForm_C);
    name.replace(sourceName, QString()).replace(unfit, QStringLiteral(" "));
    name = name.simplified().replace(spacedDash, QStringLiteral("-"));
    while (name.startsWith(u'.') || name.startsWith(u' '))
        name.remove(0, 1);
    while (name.toUtf8().size() > 120)
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
    return name.trimmed();
}

QString uniqueFileName(const QString& title, const QString& code, QSet<QString>& taken) {
    QString name = readableName(title);
    if (name.isEmpty())
        name = code;
    else if (taken.contains(name.toCaseFolded()))
        name += QStringLiteral(" (%1)").arg(code);
    taken.insert(name.toCaseFolded());
    return name + QStringLiteral(".tsdict");
}

QString uniqueCategory(const QString& title, const QString& code, QSet<QString>& taken) {
    const QRegularExpressionMatch match = sourceName.match(title);
    QString category = match.hasMatch() ? match.captured(1) : title;
    if (taken.contains(category))
        category += u' ' + code;
    taken.insert(category);
    return category;
}

} // namespace tessaly::server
