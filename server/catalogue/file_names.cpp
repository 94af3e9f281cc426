#include "catalogue/file_names.h"

#include <QRegularExpression>

namespace tessaly::server {

QString readableName(const QString& title) {
    static const QRegularExpression collection(QStringLiteral("\\s*\\(?(?:FreeDict|WikDict)\\b.*$"),
                                               QRegularExpression::CaseInsensitiveOption |
                                                   QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression unfit(QStringLiteral("[/\\\\:*?\"<>|\\p{C}]"));
    static const QRegularExpression spacedDash(QStringLiteral("\\s+-\\s+"));

    QString name = title.normalized(QString::NormalizationForm_C);
    name.replace(collection, QString()).replace(unfit, QStringLiteral(" "));
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

} // namespace tessaly::server
