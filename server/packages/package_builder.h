#pragma once

#include "catalogue/dictionary_record.h"

#include <QByteArray>
#include <QList>

#include <stop_token>

namespace tessaly::server {

/// What is wrong with a package on purpose, for tests of the device's side.
enum class PackageFault {
    None,
    Damaged, ///< a file differs from its checksum in the manifest, in an archive that is sound
    Hostile  ///< names that lead out of the folder, a symbolic link, names given twice
};

struct PackageOrder {
    int number = 0;
    QList<DictionaryRecord> records;
    QString convertedFolder;
    QString path; ///< where the package goes
    PackageFault fault = PackageFault::None;
    int extraMilliseconds = 0; ///< how much longer than needed to take
};

struct BuiltPackage {
    QString error; ///< not empty: there is no package
    qint64 size = 0;
    QByteArray sha256; ///< hexadecimal
};

/// Builds a package: a zip of a manifest and the dictionaries' files. For any thread; takes seconds for a big
/// dictionary that was never converted. Leaves nothing behind when it fails or is stopped.
BuiltPackage buildPackage(const PackageOrder& order, const std::stop_token& stop);

} // namespace tessaly::server
