#pragma once

#include <QStringList>

namespace tessaly::server {

/// Size and modification time of the files as one text: it changes when one of the files does.
QString fileStamp(const QStringList& paths);

/// A short hexadecimal name for whatever the texts say together.
QString fingerprint(const QStringList& texts);

/// Removes the files of `folder` whose names are not among `wanted`.
void removeOthers(const QString& folder, const QStringList& wanted);

} // namespace tessaly::server
