#include "dbholder.h"

#include "catalogue_file.h"

#include <common_utilities/device_path.h>
#include <common_utilities/log_line.h>

namespace tessaly::dictionary {

std::shared_ptr<DBHolder> DBHolder::newDefault() {
    QSqlDatabase db =
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("dictionary::DBHolder"));
    db.setDatabaseName(openablePath(QStringLiteral("/mnt/ext1/system/tsdicts/tsdicts.db")));
    LogLine(log::cb::trace) << "Try to connect to database: " << db.databaseName();
    if (!openCatalogueFile(db, lockWaitMs))
        LogLine(log::cb::error) << "Can not open database file" << db.databaseName();
    return std::make_shared<DBHolder>(db);
}

DBHolder::DBHolder(const QSqlDatabase& db)
    : m_dictionaryDAO(db)
    , m_migration(db)
    , m_db(db) {
    m_migration.addVersion(catalogueVersion,
                           QStringLiteral("${SYSTEMDATA}/config/dictionaries/migration/v1.sql"));
    migrate();
}

void DBHolder::migrate() const {
    const auto migrated = m_migration.migrate();
    m_isLocked = migrated.isLeft() && saysLocked(migrated.getLeft().sqlError());
    if (migrated.isLeft())
        LogLine(log::cb::error) << migrated.getLeft().toString();
    else if (migrated.getRight())
        LogLine(log::cb::trace) << "Migrated db to " << m_migration.targetVersion() << "version";
    else // the normal case, and on purpose logged as an error all the same
        LogLine(log::cb::error) << "No db migration preceeded. already migrated";
}

const DictionaryDAO& DBHolder::dictionaryDAO() const {
    if (m_isLocked) {
        QSqlDatabase db = m_db;
        db.close();
        if (openCatalogueFile(db, 0))
            migrate();
    }
    return m_dictionaryDAO;
}

} // namespace tessaly::dictionary
