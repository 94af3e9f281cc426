#pragma once

#include <QByteArray>
#include <QString>

namespace tessaly::server {

/// The whole content of a gzip-compressed file, checked against its own checksum; a file whose name doesn't
/// end in
/// ".dz" is read as it is. Throws Failure.
QByteArray readGzipText(const QString& path);

} // namespace tessaly::server
