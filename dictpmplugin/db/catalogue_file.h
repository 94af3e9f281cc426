#pragma once

#include <QSqlDatabase>
#include <QSqlError>

namespace tessaly::dictionary {

/// The newest schema that this program knows.
constexpr unsigned int catalogueVersion = 1;

/// How long a statement waits for another process that has locked the catalogue.
constexpr int lockWaitMs = 1000;

/// Opens a database file for the catalogue, and looks it over: structure, columns, language codes. The
/// catalogue is a cache, and must not stay broken for ever: a damaged file, or one that is no database at
/// all, is moved aside (NAME.damaged, which replaces an older one), which is logged, and a new one begun.
/// What another process, the disk or a read-only mount withholds is no damage, nor is a newer version.
///
///     QSqlDatabase db = ...; // with its driver and file name
///     if (!openCatalogueFile(db, lockWaitMs))
///         ...                // no database could be opened
///
/// A locked or read-only file counts as opened. `waitMs` bounds what all its statements together wait for a
/// lock; if they waited in vain, the next statements on the connection don't wait at all, and the file has
/// not been looked over. Not for databases in memory, and not for two threads at once.
bool openCatalogueFile(QSqlDatabase& db, int waitMs);

/// Whether a statement failed because another process has locked the database.
bool saysLocked(const QSqlError& error);

} // namespace tessaly::dictionary
