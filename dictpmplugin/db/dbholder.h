#pragma once

#include "dictionarydao.h"
#include "migration.h"

#include <QSqlDatabase>
#include <memory>

namespace tessaly::dictionary {

/// Owner of the catalogue database; always held through a shared pointer. The rule for threads is
/// DictionaryDAO's.
class DBHolder {
public:
    /// Opens the device's catalogue on the connection "dictionary::DBHolder". Never null; a database that
    /// could not be opened shows in isDBValid().
    static std::shared_ptr<DBHolder> newDefault();

    /// Brings the schema of an open database up to date. A failure is logged and leaves the holder usable.
    explicit DBHolder(const QSqlDatabase& db);

    [[nodiscard]] bool isDBValid() const { return m_db.isOpen() && m_db.isValid(); }
    [[nodiscard]] const DictionaryDAO& dictionaryDAO() const { return m_dictionaryDAO; }

private:
    DictionaryDAO m_dictionaryDAO;
    Migration m_migration;
    QSqlDatabase m_db;
};

} // namespace tessaly::dictionary
