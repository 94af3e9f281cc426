#include "dbholder.h"

#include "catalogue_file.h"

#include <base/log.h>
#include <common_utilities/device_path.h>

#include <ostream>

namespace tessaly::dictionary {

std::shared_ptr<DBHolder> DBHolder::newDefault() {
    QSqlDatabase db =
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("dictionary::DBHolder"));
    db.setDatabaseName(openablePath(QStringLiteral("/mnt/ext1/system/tsdicts/tsdicts.db")));
    log::cb::trace(__FILE__, __LINE__, __PRETTY_FUNCTION__, [&](std::ostream& out) -> std::ostream& {
        return out << "Try to connect to database: " << db.databaseName().toStdString();
    });
    if (!openCatalogueFile(db)) {
        log::cb::error(__FILE__, __LINE__, __PRETTY_FUNCTION__, [&](std::ostream& out) -> std::ostream& {
            return out << "Can not open database file" << db.databaseName().toStdString();
        });
    }
    return std::make_shared<DBHolder>(db);
}

DBHolder::DBHolder(const QSqlDatabase& db)
    : m_dictionaryDAO(db)
    , m_migration(db)
    , m_db(db) {
    m_migration.addVersion(1, QStringLiteral("${SYSTEMDATA}/config/dictionaries/migration/v1.sql"));
    const auto migrated = m_migration.migrate();
    const auto text = [&](std::ostream& out) -> std::ostream& {
        if (migrated.isLeft())
            return out << migrated.getLeft().toString().toStdString();
        if (migrated.getRight())
            return out << "Migrated db to " << m_migration.targetVersion() << "version";
        return out << "No db migration preceeded. already migrated";
    };
    // That there was nothing to do is the normal case, and is logged as an error all the same.
    const bool wasMigrated = migrated.isRight() && migrated.getRight();
    (wasMigrated ? log::cb::trace : log::cb::error)(__FILE__, __LINE__, __PRETTY_FUNCTION__, text);
}

} // namespace tessaly::dictionary
