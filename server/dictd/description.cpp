#include "dictd/description.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace tessaly::server {

namespace {

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

} // namespace

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

} // namespace tessaly::server
