#pragma once

#include "../../programs/package_builder.h"
#include "../../support/canned_server.h"

#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>

#include <QRandomGenerator>
#include <algorithm>

namespace tessaly::tests {

/// What doesn't shrink in an archive, so that there is something to download.
inline QByteArray noise(qsizetype size) {
    QByteArray bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), QRandomGenerator(1));
    return bytes;
}

/// An archive with these files, as a server would offer it.
inline QByteArray archiveOf(const QList<PackageBuilder::Entry>& entries) {
    PackageBuilder builder;
    builder.entries = entries;
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

    [[nodiscard]] QString directory() const { return path("/mnt/ext1/system/hunspell/"); }
    void write(const QString& name, const QByteArray& content) const {
        writeFile(directory() + name, content);
    }
    [[nodiscard]] QMap<QString, QByteArray> content() const { return folderContent(directory()); }
};

} // namespace tessaly::tests
