#include "migration.h"

#include "script_runner.h"

#include <utilities/path_resolver.h>

#include <QFile>
#include <QSqlQuery>
#include <QVariant>

namespace tessaly {

namespace {

Left<Migration::Error> failure(const QSqlQuery& query) {
    return Left<QSqlError>(query.lastError()).map<Migration::Error>(&Migration::Error::fromSqlError);
}

Either<Migration::Error, void> runScriptFile(const QSqlDatabase& db, const QString& scriptPath) {
    const QString resolved = QString::fromStdString(
        utilities::PathResolver::newDefault().resolvePreffix(scriptPath.toStdString()));
    QFile file(resolved);
    if (!file.open(QIODevice::ReadOnly)) {
        return Left<Migration::Error>(Migration::Error(QStringLiteral("`") + scriptPath +
                                                       QStringLiteral("` (") + resolved +
                                                       QStringLiteral(")") + file.errorString()));
    }
    const auto executed = sqlutils::execScript(db, QString::fromUtf8(file.readAll()));
    if (executed.isLeft())
        return Left<QSqlError>(executed.getLeft()).map<Migration::Error>(&Migration::Error::fromSqlError);
    return {};
}

} // namespace

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

Migration::Migration(const QSqlDatabase& db)
    : m_db(db) {}

void Migration::addVersion(unsigned int version, const Step& step) {
    m_versions[version].push_back(step);
}

void Migration::addVersion(unsigned int version, const QString& scriptPath) {
    addVersion(version, [scriptPath](const QSqlDatabase& db) { return runScriptFile(db, scriptPath); });
}

unsigned int Migration::targetVersion() const {
    return m_versions.empty() ? 0 : m_versions.rbegin()->first;
}

Either<Migration::Error, unsigned int> Migration::currentVersion() const {
    QSqlQuery select(m_db);
    if (select.exec(QStringLiteral("SELECT version FROM Migration;")))
        return Right<unsigned int>(select.next() ? select.value(QStringLiteral("version")).toUInt() : 0);
    // A database that was never migrated has no such table yet.
    QSqlQuery create(m_db);
    if (!create.exec(QStringLiteral("CREATE TABLE Migration (version INT);")) ||
        !create.exec(QStringLiteral("INSERT INTO Migration (version) VALUES (0);")))
        return failure(create);
    return Right<unsigned int>(0);
}

Either<Migration::Error, bool> Migration::migrate() const {
    if (m_versions.empty())
        return Right<bool>(false);
    const auto current = currentVersion();
    if (current.isLeft())
        return Left<Error>(current.getLeft());
    if (current.getRight() >= targetVersion())
        return Right<bool>(false);

    for (auto version = m_versions.upper_bound(current.getRight()); version != m_versions.end(); ++version) {
        for (const Step& step : version->second) {
            const auto done = step(m_db);
            if (done.isLeft())
                return Left<Error>(*done.left());
        }
    }

    QSqlQuery update(m_db);
    if (!update.exec(
            QStringLiteral("UPDATE Migration SET version = %1 WHERE version >= 0").arg(targetVersion())))
        return failure(update);
    return Right<bool>(true);
}

} // namespace tessaly
