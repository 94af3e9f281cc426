#include "word_lookup.h"

#include <algorithm>
#include <base/device_root.h>
#include <dictionaries/dictionary_file.h>
#include <dictionaries/vl_api.h>
#include <utilities/cfg_wrapper.h>

namespace tessaly::simulator {

namespace {

constexpr auto settingsFolder = "/mnt/ext1/system/config";
constexpr auto settingsFile = "/mnt/ext1/system/config/global.cfg";
constexpr auto dictionaryKey = "dictionary";

constexpr QChar softHyphen(0x00AD);
constexpr QChar curlyApostrophe(0x2019);
constexpr QChar apostrophe(u'\'');

constexpr qsizetype longestEntry = 50'000; // more takes its time to lay out

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

/// Without what stands around it: quotation marks, full stops, brackets. Composed, with plain apostrophes and
/// without soft hyphens. Empty when nothing of it is a letter or a digit.
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

/// What to look up for a word as it stands in a text, the likeliest first: the word itself, then its parts at
/// an apostrophe ("l'étoile") and at hyphens. Nothing for mere punctuation.
QStringList lookupForms(const QString& text) {
    const QString word = bareWord(text);
    if (word.isEmpty())
        return {};
    return QStringList{word} + partsAtApostrophe(word) + partsAtHyphens(word);
}

QString textOf(const std::vector<dictionary::Entry>& entries) {
    QStringList texts;
    qsizetype length = 0;
    for (const dictionary::Entry& entry : entries) {
        const QString text = QString::fromStdString(entry.definition).trimmed();
        if (length > longestEntry || texts.contains(text))
            continue;
        texts << text;
        length += text.size();
    }
    return texts.join(QStringLiteral("\n\n")).left(longestEntry);
}

} // namespace

WordLookup::WordLookup(QObject* parent)
    : QObject(parent) {
    readSetting();
    // The file is replaced when it changes, so its folder is what can be watched.
    m_watcher.addPath(QString::fromStdString(base::hostPath(settingsFolder)));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &WordLookup::readSetting);
}

void WordLookup::readSetting() {
    const utilities::CfgWrapper settings(settingsFile, 0);
    const QString name =
        QString::fromStdString(settings.readIfExists<std::string>(dictionaryKey).value_or(""));
    if (name == m_dictionary)
        return;
    m_dictionary = name;
    Q_EMIT dictionaryChanged();
}

void WordLookup::lookUp(const QString& text) {
    const QStringList forms = lookupForms(text);
    if (forms.isEmpty())
        return;
    readSetting();
    m_word = forms.constFirst();
    m_entry.clear();
    m_outcome = find(forms);
    Q_EMIT looked();
}

WordLookup::Outcome WordLookup::find(const QStringList& forms) {
    if (m_dictionary.isEmpty())
        return NoDictionary;
    const vl_api::DictionariesBimap installed = vl_api::enumDictionaries();
    const std::string name = m_dictionary.toStdString();
    const vl_api::Dictionary* found = installed.findByName(name);
    if (!found)
        found = installed.findByFileName(name);
    if (!found)
        return DictionaryMissing;
    // Opened for each word: it may be replaced or deleted at any time.
    const auto file = dictionary::open(found->absolutePath());
    if (file.isLeft())
        return DictionaryBroken;
    for (const QString& form : forms) {
        const auto entries = file.getRight().lookup(form.toStdString());
        if (entries.empty())
            continue;
        m_word = form;
        m_entry = textOf(entries);
        return Found;
    }
    return NoEntry;
}

} // namespace tessaly::simulator
