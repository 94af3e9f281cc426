#include "write_ahead.h"

#include <QSqlQuery>

namespace tessaly::dictionary {

WriteAhead::WriteAhead(const QSqlDatabase& db)
    : m_db(db) {
    if (!m_db.isOpen())
        return;
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
    // A rewritten catalogue fits into the log, so that no flush for moving it comes in between.
    query.exec(QStringLiteral("PRAGMA wal_autocheckpoint=8000"));
}

WriteAhead::~WriteAhead() {
    if (m_db.isOpen())
        QSqlQuery(m_db).exec(QStringLiteral("PRAGMA journal_mode=DELETE"));
}

} // namespace tessaly::dictionary
