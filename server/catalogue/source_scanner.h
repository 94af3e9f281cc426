#pragma once

#include "catalogue/source_info.h"

#include <QList>

namespace tessaly::server {

/// Finds the FreeDict dictionaries in a folder, sorted by their paths. What hasn't changed since the last
/// scan is taken from `cachePath`, which makes all starts but the first quick. A cache that can't be read or
/// written costs time only.
QList<SourceInfo> scanSources(const QString& folder, const QString& cachePath);

} // namespace tessaly::server
