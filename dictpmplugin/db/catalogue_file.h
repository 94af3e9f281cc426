#pragma once

#include <QSqlDatabase>

namespace tessaly::dictionary {

/// Opens a database file for the catalogue, tuned so that single statements don't cost a disk flush each and
/// a killed process loses nothing that was written. A file that turns out to be damaged, or no database at
/// all, is moved aside (NAME.damaged, which replaces an older one), which is logged, and a new one begun: the
/// catalogue is a cache, and would otherwise stay broken for ever. False if no database could be opened; a
/// locked or read-only file counts as opened.
bool openCatalogueFile(QSqlDatabase& db);

} // namespace tessaly::dictionary
