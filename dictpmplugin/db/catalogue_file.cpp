#include "catalogue_file.h"

#include "dictionarydao.h"

#include <common_utilities/log_line.h>
#include <utilities/locale.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QUrl>
#include <QVariant>

namespace tessaly::dictionary {

namespace {

enum class Finding { Sound, Damaged, Withheld };

/// SQLite's primary code: the driver reports extended ones, whose low byte it is.
int codeOf(const QSqlError& error) {
    return error.nativeErrorCode().toInt() & 0xFF;
}

Finding findingOf(const QSqlError& error) {
    switch (codeOf(error)) {
    case 5:  // busy
    case 6:  // locked
    case 7:  // out of memory
    case 8:  // read-only
    case 9:  // interrupted
    case 10: // input or output failed
    case 13: // disk full
    case 14: // can't be opened
        return Finding::Withheld;
    default:
        return Finding::Damaged;
    }
}

void setLockWait(const QSqlDatabase& db, qint64 ms) {
    QSqlQuery(db).exec(QStringLiteral("PRAGMA busy_timeout=%1").arg(ms));
}

/// One look at an open file.
class Inspection {
public:
    Inspection(const QSqlDatabase& db, int waitMs)
        : m_db(db)
        , m_query(db)
        , m_deadline(waitMs) {}

    Finding run() {
        const Finding finding = look();
        setLockWait(m_db, saysLocked(m_query.lastError()) ? 0 : lockWaitMs);
        return finding;
    }

private:
    Finding look() {
        // What a killed process left in its log comes into the file. If that is refused, the next is too.
        exec(QStringLiteral("PRAGMA journal_mode=DELETE"));
        exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
        // Damage in the middle shows in no single statement; the catalogue is small enough to be read once.
        if (!exec(QStringLiteral("PRAGMA integrity_check(1)")) || !m_query.next())
            return findingOf(m_query.lastError());
        if (m_query.value(0).toString() != u"ok")
            return Finding::Damaged;
        const Finding columns = lookAtColumns();
        return columns == Finding::Sound ? lookAtLanguageCodes() : columns;
    }

    /// Whether the columns are there that the program's statements name.
    Finding lookAtColumns() {
        const QStringList tables = m_db.tables();
        unsigned int version = 0;
        if (tables.contains(u"Migration", Qt::CaseInsensitive)) {
            if (!exec(QStringLiteral("SELECT version FROM Migration")))
                return findingOf(m_query.lastError());
            version = m_query.next() ? m_query.value(0).toUInt() : 0;
        }
        if (version > catalogueVersion)
            return Finding::Sound; // its columns are for a newer program to judge
        if (!tables.contains(u"Dictionaries", Qt::CaseInsensitive))
            return version == 0 ? Finding::Sound : Finding::Damaged; // the migration makes it, or never will
        if (!exec(QStringLiteral("EXPLAIN ") + DictionaryDAO::listStatement()))
            return findingOf(m_query.lastError());
        // Its type makes `id` the row's own number, or, misspelt, a column that nobody fills.
        exec(QStringLiteral("SELECT 1 FROM Dictionaries WHERE id IS NOT rowid LIMIT 1"));
        return m_query.next() ? Finding::Damaged : Finding::Sound;
    }

    /// A stored code that doesn't parse ends the process that reads it.
    Finding lookAtLanguageCodes() {
        exec(QStringLiteral("SELECT lang_iso_from FROM Dictionaries UNION "
                            "SELECT lang_iso_to FROM Dictionaries"));
        while (m_query.next()) {
            const std::string code = m_query.value(0).toString().toStdString();
            if (utilities::locale_parser::tagged_parse(code, '_').isLeft())
                return Finding::Damaged;
        }
        constexpr int noSuchColumn = 1; // nor table: there are no codes to look at
        const QSqlError error = m_query.lastError();
        return !error.isValid() || codeOf(error) == noSuchColumn ? Finding::Sound : findingOf(error);
    }

    bool exec(const QString& statement) {
        m_query.finish();
        setLockWait(m_db, m_deadline.remainingTime());
        return m_query.exec(statement);
    }

    const QSqlDatabase m_db;
    QSqlQuery m_query;
    const QDeadlineTimer m_deadline; ///< of all waits for a lock together
};

/// The header's write version is one that SQLite takes for newer than itself, and never writes to.
bool refusesWriters(const QString& path) {
    QFile file(path);
    char version = 0;
    return file.open(QIODevice::ReadOnly) && file.seek(18) && file.getChar(&version) &&
           static_cast<unsigned char>(version) > 2;
}

void moveAside(const QString& path) {
    const QString aside = path + QStringLiteral(".damaged");
    QFile::remove(aside);
    const bool moved = QFile::rename(path, aside); // SQLite itself drops the logs of a file that isn't there
    LogLine(log::cb::error) << "Catalogue database is damaged: " << path
                            << (moved ? ", moved aside to " : ", could not be moved to ") << aside;
}

} // namespace

bool openCatalogueFile(QSqlDatabase& db, int waitMs) {
    const auto open = [&] { return db.open() ? Inspection(db, waitMs).run() : Finding::Withheld; };
    const QString path = db.databaseName();
    // Before the database is open: closing the file takes the locks that the process holds on it.
    Finding finding = refusesWriters(path) ? Finding::Damaged : open();
    if (finding == Finding::Withheld && !QFileInfo(path).isWritable()) {
        // A read-only mount has no room beside the file for what SQLite wants there, and nobody changes it.
        db.close();
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI"));
        db.setDatabaseName(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) +
                           QStringLiteral("?immutable=1"));
        finding = open();
    }
    if (finding == Finding::Damaged) {
        db.close();
        moveAside(path);
        if (open() == Finding::Damaged)
            db.close();
    }
    return db.isOpen();
}

bool saysLocked(const QSqlError& error) {
    return codeOf(error) == 5 || codeOf(error) == 6;
}

} // namespace tessaly::dictionary
