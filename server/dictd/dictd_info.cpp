#include "dictd/dictd_info.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

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

/// Lines that say again what the record says, or are for the dictionary's makers.
bool isForMakers(const QString& line) {
    static const QRegularExpression form(
        QStringLiteral("^(?:Edition:|Publisher:|Publication date:|ID#|Maintainer: *\\[up for grabs\\]|\\* "
                       "Database Status:)"));
    return form.match(line).hasMatch();
}

bool startsParagraph(const QString& line, qsizetype indent) {
    // The texts set off a new paragraph inside a section by two more blanks, a list item by an asterisk.
    return indent == 0 || indent >= 4 || line.startsWith(u"* ");
}

/// The information text made fit for a reader: hard-wrapped lines joined into paragraphs, and left out what
/// the reader sees elsewhere or has no use for (the title, edition and dates, the history of changes).
QString readableDescription(const QString& infoText, const QString& title) {
    static const QRegularExpression heading(
        QStringLiteral("^(?:Availability|Notes|Source\\(s\\)|The Project):$"));
    static const QRegularExpression size(QStringLiteral("^Size: (\\d+ headwords)$"),
                                         QRegularExpression::MultilineOption);
    static const QRegularExpression repeatedAddress(QStringLiteral("(\\S+) \\[\\1\\]"));

    QStringList paragraphs;
    bool open = false; // the next line goes on with the last paragraph
    QString label;     // a section's heading, set in front of its first paragraph
    for (const QString& raw : infoText.split(u'\n')) {
        const QString line = raw.trimmed();
        const qsizetype indent = std::distance(
            raw.begin(), std::find_if_not(raw.begin(), raw.end(), [](QChar c) { return c.isSpace(); }));
        if (line == u"Changelog:")
            break;
        if (line.isEmpty() || line == title || isForMakers(line)) {
            open = false;
        } else if (heading.match(line).hasMatch()) {
            // Under which heading the licence and the project's own words stand is plain from what they say.
            label = line == u"Source(s):" ? QStringLiteral("Sources: ") : QString();
            open = false;
        } else if (open && !startsParagraph(line, indent)) {
            paragraphs.last() += u' ' + line;
        } else {
            paragraphs << label + (line.startsWith(u"* ") ? line.sliced(2) : line);
            label.clear();
            open = true;
        }
    }
    return paragraphs.join(u"\n\n")
        .replace(repeatedAddress, QStringLiteral("\\1"))
        .replace(size, QStringLiteral("\\1"));
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
