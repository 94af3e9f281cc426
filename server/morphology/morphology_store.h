#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace tessaly::server {

/// The Hunspell data on offer, one pair of files for each language. Unchanging, so fit for any thread.
class MorphologyStore {
public:
    /// Finds the data in `hunspellDirectory`; of several regions of a language the main one is taken.
    /// Archives are kept in `cacheDirectory`, which is made, and cleared of those of older data. Throws a
    /// Failure if that can't be done.
    MorphologyStore(const QString& hunspellDirectory, const QString& cacheDirectory, bool allLanguages);

    /// Two-letter codes.
    QStringList languages() const { return m_pairs.keys(); }

    /// Path of the zip with CODE.aff and CODE.dic. Making it at the first call may take a second. Throws a
    /// Failure if it can't be made.
    QString archive(const QString& language) const;

private:
    struct Pair {
        QString base;    ///< path without the suffixes
        QString archive; ///< path of the zip
    };

    QMap<QString, Pair> m_pairs;
};

} // namespace tessaly::server
