#include "dictd/dictd_info.h"

#include "dictd/description.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>

namespace tessaly::server {

namespace {

/// The value of a line "Name: value.", without the closing dot.
QString field(const QString& infoText, QLatin1String name) {
    const QRegularExpression line(QStringLiteral("^%1:[ \\t]*(.+?)\\.?[ \\t]*$").arg(name),
                                  QRegularExpression::MultilineOption);
    return line.match(infoText).captured(1);
}

int versionNumber(const QString& edition) {
    static const QRegularExpression form(
        QStringLiteral("^(\\d{1,5})(?:[.-](\\d{1,2}))?(?:[.-](\\d{1,2}))?$"));
    const QRegularExpressionMatch match = form.match(edition);
    if (!match.hasMatch())
        return 1;
    return match.captured(1).toInt() * 10000 + match.captured(2).toInt() * 100 + match.captured(3).toInt();
}

QString isoDate(const QString& written) {
    static const QRegularExpression ordinal(QStringLiteral("(\\d)(?:st|nd|rd|th)\\b(?: of)?"));
    const QString plain = QString(written).replace(ordinal, QStringLiteral("\\1")).simplified();
    for (const QLatin1String format :
         {QLatin1String("yyyy-MM-dd"), QLatin1String("MMM d, yyyy"), QLatin1String("MMMM d, yyyy"),
          QLatin1String("d MMM yyyy"), QLatin1String("d MMMM yyyy")}) {
        const QDate date = QLocale::c().toDate(plain, format);
        if (date.isValid())
            return date.toString(Qt::ISODate);
    }
    return {};
}

QString newestChange(const QString& infoText) {
    static const QRegularExpression change(QStringLiteral("^ *\\* *(\\d{4}-\\d\\d-\\d\\d)\\b"),
                                           QRegularExpression::MultilineOption);
    QString newest;
    auto matches = change.globalMatch(infoText, std::max<qsizetype>(0, infoText.indexOf(u"Changelog:")));
    while (matches.hasNext()) {
        const QString date = matches.next().captured(1);
        if (QDate::fromString(date, Qt::ISODate).isValid())
            newest = std::max(newest, date);
    }
    return newest;
}

} // namespace

DictdInfo parseDictdInfo(const QString& shortText, const QString& infoText) {
    static const QRegularExpression ending(QStringLiteral("^(.*?)(?:\\s+ver\\.\\s*(\\S+))?$"));
    const QRegularExpressionMatch match = ending.match(shortText.simplified());

    DictdInfo info;
    info.title = match.captured(1);
    const QString edition = field(infoText, QLatin1String("Edition"));
    info.version = versionNumber(edition.isEmpty() ? match.captured(2) : edition);
    info.provider = field(infoText, QLatin1String("Publisher"));
    info.publishDate = isoDate(field(infoText, QLatin1String("Publication date")));
    if (info.publishDate.isEmpty())
        info.publishDate = newestChange(infoText);
    info.description = readableDescription(infoText, info.title);
    return info;
}

} // namespace tessaly::server
