#pragma once

#include <common_utilities/either.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

namespace tessaly::sqlutils {

/// Executes the statements of an SQL text one by one and returns their number:
///
///     execScript(db, QStringLiteral("CREATE TABLE Notes (text); INSERT INTO Notes VALUES ('a;b');")) // 2
///
/// Stops at the first that fails;
/// those before it stay executed. A `;` ends a statement, except within single quotes, where a backslash
/// escapes the next character. Comments aren't known: a `;` in one ends a statement too.
Either<QSqlError, int> execScript(const QSqlDatabase& db, const QString& script);

} // namespace tessaly::sqlutils
