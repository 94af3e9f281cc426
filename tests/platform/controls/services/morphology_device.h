#pragma once

#include "../../programs/package_builder.h"
#include "../../utilities/canned_server.h"

#include <simulator/fixture/test_device.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QRandomGenerator>
#include <QString>

namespace tessaly::tests {

/// What doesn't shrink in an archive, so that there is something to download.
inline QByteArray noise(qsizetype size) {
    QRandomGenerator generator(1);
    QByteArray bytes(size, '\0');
    for (char& byte : bytes)
        byte = char(generator.generate());
    return bytes;
}

/// An archive with these files, as a server would offer it.
inline QByteArray archiveOf(const QList<PackageBuilder::Entry>& entries, quint32 bombSize = 0) {
    PackageBuilder builder;
    builder.entries = entries;
    builder.bombSize = bombSize;
    builder.manifest = QByteArray();
    return builder.build();
}

inline QByteArray archiveOf(const QByteArray& rules, const QByteArray& words) {
    return archiveOf({{QStringLiteral("de.aff"), rules}, {QStringLiteral("de.dic"), words}});
}

/// A device online, and what lies among its morphology data.
class MorphologyDevice : public fixture::TestDevice {
public:
    MorphologyDevice() { setOnline(true); }

    [[nodiscard]] QString folder() const { return path("/mnt/ext1/system/hunspell/"); }

    void write(const QString& name, const QByteArray& content) const {
        QDir().mkpath(QFileInfo(folder() + name).path());
        QFile file(folder() + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("can not write %s", qPrintable(file.fileName()));
    }

    /// Content by name; hidden ones and folders too.
    [[nodiscard]] QMap<QString, QByteArray> content() const {
        QMap<QString, QByteArray> found;
        const auto names = QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        for (const QString& name : names) {
            QFile file(folder() + name);
            found.insert(name, file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("folder"));
        }
        return found;
    }
};

} // namespace tessaly::tests
