#include "catalogue_file.h"

#include <common_utilities/log_line.h>

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace tessaly::dictionary {

namespace {

/// SQLite's codes for a malformed file and for one that is no database.
bool saysDamaged(const QSqlQuery& query) {
    const QString code = query.lastError().nativeErrorCode();
    return code == u"11" || code == u"26";
}

/// Sets the modes of a freshly opened file and looks it over. False if the file is damaged.
bool setUp(const QSqlDatabase& db) {
    QSqlQuery query(db);
    // WAL can only be switched on while no statement is active, so it comes first. A rewritten catalogue fits
    // into the log (8,000 pages), so that no flush for moving it into the database comes in between.
    for (const QString& mode : {QStringLiteral("journal_mode=WAL"), QStringLiteral("synchronous=NORMAL"),
                                QStringLiteral("wal_autocheckpoint=8000")}) {
        if (!query.exec(QStringLiteral("PRAGMA ") + mode) && saysDamaged(query))
            return false;
        query.finish();
    }
    // Damage in the middle shows in no single statement; the catalogue is small enough to be read once.
    if (!query.exec(QStringLiteral("PRAGMA quick_check(1)")))
        return !saysDamaged(query);
    return query.next() ? query.value(0).toString() == u"ok" : !saysDamaged(query);
}

void moveAside(const QString& path) {
    const QString aside = path + QStringLiteral(".damaged");
    QFile::remove(aside);
    const bool moved = QFile::rename(path, aside);
    if (moved) {
        // The write-ahead log belongs to the damaged file, and would be played into the new one.
        QFile::remove(path + QStringLiteral("-wal"));
        QFile::remove(path + QStringLiteral("-shm"));
    }
    LogLine(log::cb::error) << "Catalogue database is damaged: " << path
                            << (moved ? ", moved aside to " : ", could not be moved to ") << aside;
}

} // namespace

bool openCatalogueFile(QSqlDatabase& db) {
    if (!db.open())
        return false;
    if (setUp(db))
        return true;
    db.close();
    moveAside(db.databaseName());
    if (db.open() && setUp(db))
        return true;
    db.close();
    return false;
}

} // namespace tessaly::dictionary
