#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tessaly::server {

/// One line of a dictd index: a headword, as a rule in lower case, and where its text is.
struct DictdEntry {
    QByteArrayView headword;
    qsizetype offset = 0;
    qsizetype length = 0;
};

/// A dictionary in dictd format, read and checked whole: an index file and, beside it, the text, compressed
/// (".dict.dz") or not (".dict"). Unchanging, so fit for any thread. Not copied: entries point into it.
class DictdDictionary {
public:
    /// Throws Failure if a file is missing or damaged, or the index points outside the text.
    explicit DictdDictionary(const QString& indexPath);
    DictdDictionary(const DictdDictionary&) = delete;
    DictdDictionary& operator=(const DictdDictionary&) = delete;

    /// The file with the text that belongs to an index; empty if there is none.
    static QString textPath(const QString& indexPath);

    /// The words, in the order of the index, without what the dictionary says about itself.
    const std::vector<DictdEntry>& entries() const { return m_entries; }
    QString text(const DictdEntry& entry) const;

    /// What the dictionary says about itself under a name such as "short" or "info", without the headword
    /// that may stand in its first line; empty if it says nothing.
    QString about(QLatin1String name) const;

private:
    /// False if there are no numbers in it or they point outside the text.
    bool readLine(QByteArrayView line);

    QByteArray m_index;
    QByteArray m_text;
    std::vector<DictdEntry> m_entries;
    std::vector<DictdEntry> m_about;
};

} // namespace tessaly::server
