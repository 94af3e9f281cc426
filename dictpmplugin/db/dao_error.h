#pragma once

#include <QDebug>
#include <QSqlError>
#include <QString>

namespace tessaly {

/// A failed database access: what the program was doing, and what the driver said.
///
///     return Left<DAOError>(DAOError("error while listing dictionaries", query.lastError()));
///
/// A plain value.
class DAOError {
public:
    DAOError(const QString& message, const QSqlError& sqlError);

    [[nodiscard]] const QSqlError& sqlError() const { return m_sqlError; }
    [[nodiscard]] QString toString() const;

    friend QDebug& operator<<(QDebug& debug, const DAOError& error);

private:
    QString m_message;
    QSqlError m_sqlError;
};

} // namespace tessaly
