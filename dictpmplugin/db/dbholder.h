#pragma once

#include "dictionarydao.h"
#include "migration.h"

#include <QSqlDatabase>
#include <memory>

namespace tessaly::dictionary {

/// Owner of the catalogue database; always held through a shared pointer.
///
///     const auto holder = DBHolder::newDefault();
///     if (holder->isDBValid())
///         const auto records = holder->dictionaryDAO().list();
///
/// A catalogue that another process has locked is opened and migrated once the lock is gone. The rule for
/// threads is DictionaryDAO's.
class DBHolder {
public:
    /// Opens the device's catalogue on the connection "dictionary::DBHolder". Never null; a database that
    /// could not be opened shows in isDBValid(). Waits a second at most for a lock.
    static std::shared_ptr<DBHolder> newDefault();

    /// Brings the schema of an open database up to date. A failure is logged and leaves the holder usable.
    explicit DBHolder(const QSqlDatabase& db);

    [[nodiscard]] bool isDBValid() const { return m_db.isOpen() && m_db.isValid(); }
    /// To be asked for anew before each use: that is when a lock is looked at again.
    [[nodiscard]] const DictionaryDAO& dictionaryDAO() const;

private:
    void migrate() const;

    DictionaryDAO m_dictionaryDAO;
    Migration m_migration;
    QSqlDatabase m_db;
    mutable bool m_isLocked = false; ///< by another process, when it was last looked at
};

} // namespace tessaly::dictionary
