#pragma once

#include "dao_error.h"

#include <common_utilities/either.h>
#include <dictionaries/dictionary_info.h>

#include <QSqlDatabase>
#include <QString>
#include <vector>

namespace tessaly::dictionary {

/// Reads and writes the catalogue's table `Dictionaries`.
///
///     dao.deleteAll().qGetOrErr();
///     dao.addMultiple(records).qGetOrErr();
///
/// Each statement stands for itself: there is no transaction, and no way to change or delete one record.
///
/// The driver's connection has no mutex of its own: the handle may be handed from thread to thread, but two
/// threads must never use it at once. Callers see to that: the list model refuses to read on its thread while
/// its worker reads and rewrites, and the connector writes only where the database isn't open.
class DictionaryDAO {
public:
    explicit DictionaryDAO(const QSqlDatabase& db);

    /// What list() asks the database.
    static QString listStatement();

    /// All records in the database's own order. `publishDate` is empty and `dictSet` carries the description.
    /// A stored language code that doesn't parse ends the process with status -1.
    [[nodiscard]] Either<DAOError, std::vector<DictionaryInfo>> list() const;

    /// Stops at the first record that can't be inserted; those before it stay. The database numbers the rows.
    [[nodiscard]] Either<DAOError, void> addMultiple(const std::vector<DictionaryInfo>& items) const;

    [[nodiscard]] Either<DAOError, void> deleteAll() const;

private:
    QSqlDatabase m_db;
};

} // namespace tessaly::dictionary
