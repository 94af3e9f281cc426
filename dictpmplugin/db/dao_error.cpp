#include "dao_error.h"

namespace tessaly {

DAOError::DAOError(const QString& message, const QSqlError& sqlError)
    : m_message(message)
    , m_sqlError(sqlError) {}

QString DAOError::toString() const {
    return m_message + QStringLiteral(": ") + m_sqlError.text();
}

QDebug& operator<<(QDebug& debug, const DAOError& error) {
    debug << error.m_message << ":" << error.m_sqlError;
    return debug;
}

} // namespace tessaly
