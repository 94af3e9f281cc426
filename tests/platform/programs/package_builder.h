#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QList>
#include <QString>
#include <functional>
#include <optional>
#include <sys/stat.h>

namespace tessaly::tests {

/// The bytes of a dictionary file; `definition` makes the text of one entry. Throws std::runtime_error.
QByteArray makeDictionary(const QString& title, int entries, const std::function<QString()>& definition);

/// The bytes of a database that these statements make.
QByteArray makeDatabase(const QByteArray& sql);

/// A package in the making. A good one unless its parts are changed by hand before it is written.
struct PackageBuilder {
    enum class Kind : unsigned { File = S_IFREG, Link = S_IFLNK, Folder = S_IFDIR };
    struct Entry {
        QString name;
        QByteArray content; ///< of a link, where it leads
        Kind kind = Kind::File;
    };

    QList<Entry> entries;               ///< in the archive's order, the manifest apart
    QJsonArray listed;                  ///< the manifest's "files"
    quint32 bombSize = 0;               ///< this number reads 1000 wherever the archive says it
    std::optional<QByteArray> manifest; ///< instead of one made from `listed`; a null array leaves it out

    /// Packs a file and lists it.
    void add(const QString& name, const QByteArray& content);
    /// Packs so many zeros as a file of 1000 bytes: so the manifest says, and the archive's own directory.
    void addBomb(quint32 size);
    /// Changes one field of the last listed file.
    void relist(const QString& key, const QJsonValue& value);

    /// The package's bytes. Throws std::runtime_error.
    [[nodiscard]] QByteArray build() const;
    void write(const QString& hostPath) const;
};

} // namespace tessaly::tests
