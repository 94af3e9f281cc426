#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace tessaly::tests {

/// The bytes of a dictionary file; `definition` makes the text of one entry. Throws std::runtime_error.
QByteArray makeDictionary(const QString& title, int entries, const std::function<QString()>& definition);

/// The bytes of a database that these statements make.
QByteArray makeDatabase(const QByteArray& sql);

/// A package in the making. A good one unless its parts are changed by hand before it is written.
struct PackageBuilder {
    struct Entry {
        QString name;       ///< ends with a slash if it is a folder
        QByteArray content; ///< of a link, where it leads
        bool isLink = false;
    };

    QList<Entry> entries;               ///< in the archive's order, the manifest apart
    QJsonArray listed;                  ///< the manifest's "files"
    quint32 bombSize = 0;               ///< this number reads 1000 wherever the archive says it
    quint32 hole = 0;                   ///< so many bytes that take no room on the disk lie before its files
    std::optional<QByteArray> manifest; ///< instead of one made from `listed`; a null array leaves it out
    std::optional<QByteArray> bytes;    ///< instead of all that

    /// Packs a file and lists it.
    void add(const QString& name, const QByteArray& content);
    /// Packs so many zeros as a file of 1000 bytes: so the manifest says, and the archive's own directory.
    void addBomb(quint32 size);
    /// Changes one field of the last listed file.
    void relist(const QString& key, const QJsonValue& value);

    /// The package's bytes.
    [[nodiscard]] QByteArray build() const;
    void write(const QString& hostPath) const;
};

} // namespace tessaly::tests
