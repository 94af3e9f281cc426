#include "word.h"

#include <algorithm>

namespace tessaly::simulator {

namespace {

constexpr QChar softHyphen(0x00AD);
constexpr QChar curlyApostrophe(0x2019);
constexpr QChar apostrophe(u'\'');

/// One letter alone is what elision left of a word.
QStringList worthLookingUp(QStringList parts) {
    parts.removeIf([](const QString& part) { return part.size() < 2; });
    return parts;
}

/// What carries the meaning comes first: the end of "dell'arte", the beginning of "sister's".
QStringList partsAtApostrophe(const QString& word) {
    const qsizetype at = word.lastIndexOf(apostrophe);
    if (at < 0)
        return {};
    const QString before = word.first(at);
    const QString after = word.sliced(at + 1);
    const bool isEnding = after.size() < 3 && after.size() < before.size();
    return worthLookingUp(isEnding ? QStringList{before, after} : QStringList{after, before});
}

QStringList partsAtHyphens(const QString& word) {
    const QStringList parts = word.split(u'-');
    return parts.size() > 1 ? worthLookingUp(parts) : QStringList();
}

} // namespace

QString bareWord(const QString& text) {
    QString word = text.normalized(QString::NormalizationForm_C);
    word.remove(softHyphen);
    word.replace(curlyApostrophe, apostrophe);
    // Letters beyond the first plane come as pairs, which belong to the word.
    const auto belongs = [](QChar c) { return c.isLetterOrNumber() || c.isSurrogate() || c.isMark(); };
    const auto first = std::find_if(word.cbegin(), word.cend(), belongs);
    const auto last = std::find_if(word.crbegin(), word.crend(), belongs).base();
    return first < last ? QString(first, last - first) : QString();
}

QStringList lookupForms(const QString& text) {
    const QString word = bareWord(text);
    if (word.isEmpty())
        return {};
    return QStringList{word} + partsAtApostrophe(word) + partsAtHyphens(word);
}

} // namespace tessaly::simulator
