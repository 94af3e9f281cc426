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
    if (!openCatalogueFile(db))
        LogLine(log::cb::error) << "Can not open database file" << db.databaseName();
    return std::make_shared<DBHolder>(db);
}

DBHolder::DBHolder(const QSqlDatabase& db)
    : m_dictionaryDAO(db)
    , m_migration(db)
    , m_db(db) {
    m_migration.addVersion(1, QStringLiteral("${SYSTEMDATA}/config/dictionaries/migration/v1.sql"));
    const auto migrated = m_migration.migrate();
    if (migrated.isLeft())
        LogLine(log::cb::error) << migrated.getLeft().toString();
    else if (migrated.getRight())
        LogLine(log::cb::trace) << "Migrated db to " << m_migration.targetVersion() << "version";
    else // the normal case, and on purpose logged as an error all the same
        LogLine(log::cb::error) << "No db migration preceeded. already migrated";
}

} // namespace tessaly::dictionary
