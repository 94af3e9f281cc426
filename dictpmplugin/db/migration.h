#pragma once

#include <common_utilities/either.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include <functional>
#include <map>
#include <vector>

namespace tessaly {

/// Brings a database's schema up to the newest registered version.
///
///     Migration migration(db);
///     migration.addVersion(1, QStringLiteral("${SYSTEMDATA}/config/dictionaries/migration/v1.sql"));
///     const auto outcome = migration.migrate();
///
/// The version is kept in the one-column table `Migration` of the same database. There is no way back to an
/// older version, and no transaction. Use it on the thread that may use the connection.
class Migration {
public:
    /// Why a migration failed: a statement, or anything else with a message of its own.
    class Error {
    public:
        explicit Error(const QString& message);
        static Error fromSqlError(const QSqlError& error);

        [[nodiscard]] bool isSql() const { return m_isSql; }
        [[nodiscard]] const QSqlError& sqlError() const { return m_sqlError; }
        [[nodiscard]] QString toString() const;

    private:
        explicit Error(const QSqlError& sqlError);

        QSqlError m_sqlError; ///< set only if m_isSql
        QString m_message;    ///< set only if not m_isSql
        bool m_isSql = false;
    };

    using Step = std::function<Either<Error, void>(const QSqlDatabase&)>;

    explicit Migration(const QSqlDatabase& db);

    /// Appends a step to a version; the steps of one version run in the order they were added.
    void addVersion(unsigned int version, const Step& step);
    /// Appends a step that runs an SQL script file; the path may begin with "${SYSTEMDATA}".
    void addVersion(unsigned int version, const QString& scriptPath);

    /// The highest registered version, 0 without any.
    [[nodiscard]] unsigned int targetVersion() const;

    /// True: steps ran and the version was recorded. False: nothing to do. There is no transaction: what ran
    /// before a failing step stays, unrecorded, and runs again next time.
    [[nodiscard]] Either<Error, bool> migrate() const;

private:
    [[nodiscard]] Either<Error, unsigned int> currentVersion() const;

    QSqlDatabase m_db;
    std::map<unsigned int, std::vector<Step>> m_versions;
};

} // namespace tessaly
