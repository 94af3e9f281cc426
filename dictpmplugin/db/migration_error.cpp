#include "migration.h"

namespace tessaly {

Migration::Error::Error(const QString& message)
    : m_message(message) {}

Migration::Error::Error(const QSqlError& sqlError)
    : m_sqlError(sqlError)
    , m_isSql(true) {}

Migration::Error Migration::Error::fromSqlError(const QSqlError& error) {
    return Error(error);
}

QString Migration::Error::toString() const {
    return m_isSql ? QStringLiteral("sql error: ") + m_sqlError.text() : m_message;
}

} // namespace tessaly
