#include "catalogue_rows.h"

#include <dictpmplugin/db/dbholder.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/log_watch.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTest>
#include <algorithm>
#include <optional>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tessaly;
using dictionary::DBHolder;
using tests::catalogueConnection;

class DbHolderTest : public QObject {
    Q_OBJECT

    std::optional<fixture::TestDevice> m_device;
    std::optional<LogWatch> m_watch;
    std::shared_ptr<DBHolder> m_holder;
    QString m_path;

    static QSqlDatabase database() { return QSqlDatabase::database(catalogueConnection, false); }
    void close() {
        m_holder.reset();
        QSqlDatabase::removeDatabase(catalogueConnection);
    }
    void open() {
        close();
        m_watch->clear();
        m_holder = DBHolder::newDefault();
    }
    QStringList leveledLines() const {
        QStringList result;
        for (const tessaly::log::Record& record : m_watch->records())
            result << QString::number(int(record.level)) + u' ' + QString::fromStdString(record.text);
        return result;
    }
    QString titles() const {
        const auto list = m_holder->dictionaryDAO().list();
        QStringList result;
        for (const auto& info : list.getRight())
            result << QString::fromStdString(info.name);
        return result.join(u", ");
    }
    bool works(int count = 2) const {
        const auto& dao = m_holder->dictionaryDAO();
        return m_holder->isDBValid() && dao.deleteAll().isRight() &&
               dao.addMultiple(tests::makeRecords(count)).isRight() && titles().startsWith(u"1, 2") &&
               int(dao.list().getRight().size()) == count;
    }

private Q_SLOTS:
    void init() {
        m_device.emplace();
        m_path = m_device->path("/mnt/ext1/system/tsdicts/tsdicts.db");
        m_watch.emplace();
        m_watch->allow(u"No db migration preceeded. already migrated"_qs);
    }
    void cleanup() {
        close();
        QCOMPARE(m_watch->unexpected(), QStringList());
    }

    void createsAndReopens() {
        const QString trying = u"4 Try to connect to database: "_qs + m_path;
        open();
        QCOMPARE(leveledLines(), QStringList({trying, u"4 Migrated db to 1version"_qs}));
        QVERIFY(works());
        // All is in the file itself; there is no log to hide or to grow.
        QCOMPARE(QFileInfo(m_path).dir().entryList(QDir::Files), QStringList(u"tsdicts.db"_qs));
        open();
        QCOMPARE(leveledLines(), QStringList({trying, u"1 No db migration preceeded. already migrated"_qs}));
        for (const QString& killedBefore :
             {u"UPDATE Migration SET version = 0"_qs, u"DELETE FROM Migration"_qs}) {
            tests::rows(database(), killedBefore);
            open();
            QCOMPARE(m_watch->lines().last(), u"Migrated db to 1version"_qs);
            QCOMPARE(titles(), u"1, 2"_qs);
        }
    }

    void opensOneOfTheReleasedSchema() {
        QVERIFY(QFile::copy(QStringLiteral(TEST_DATA_DIR "/catalogue-v1.db"), m_path));
        open();
        QCOMPARE(m_watch->lines(u"already migrated"_qs).size(), 1);
        QCOMPARE(titles(), u"Čeština → English (FreeDict), Deutsch → Italiano, 英漢字典, Klingon Primer"_qs);
        const auto list = m_holder->dictionaryDAO().list().getRight();
        QVERIFY(list[2].languageTo->stringify('_') == "zh_tw" && list[3].serverId == 2147483647);
        QVERIFY(works());
    }

    void healsWhatIsDamaged_data() {
        QTest::addColumn<QString>("statement"); // that is executed in the file of 300 records
        QTest::addColumn<int>("from");          // of the bytes that are overwritten then
        QTest::addColumn<int>("overwritten");   // their number; of what is cut off it is -1
        QTest::addColumn<QString>("outcome");
        const auto bytes = [](const char* name, int from, int overwritten) {
            QTest::newRow(name) << QString() << from << overwritten << u"begun anew"_qs;
        };
        bytes("half", 24'000, -1);
        bytes("header", 0, 100);
        bytes("format of the schema", 47, 1);
        bytes("version for writers", 18, 1);
        bytes("middle", 24'000, 6'000);
        bytes("length of the free list", 39, 1);
        const auto row = [](const char* statement, const char* outcome) {
            QTest::newRow(statement) << QString::fromLatin1(statement) << 0 << 0
                                     << QString::fromLatin1(outcome);
        };
        row("DROP TABLE Dictionaries", "begun anew");
        row("ALTER TABLE Dictionaries RENAME thumbnail TO t", "begun anew");
        row("ALTER TABLE Migration RENAME version TO v", "begun anew");
        row("PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql = replace(sql, 'INTEGER PRIM', 'X "
            "PRIM')",
            "begun anew");
        row("UPDATE Dictionaries SET lang_iso_from = 'e!' WHERE id = 9", "begun anew");
        row("UPDATE Dictionaries SET lang_iso_to = 'de-' WHERE id = 9", "begun anew");
        row("UPDATE Dictionaries SET lang_iso_to = ''", "kept");
        row("DELETE FROM Migration", "kept");
        row("PRAGMA journal_mode=WAL", "kept");
        row("DROP TABLE Migration", "kept");
        row("UPDATE Migration SET version = 2", "kept");
        row("UPDATE Migration SET version = 2; ALTER TABLE Dictionaries RENAME thumbnail TO t", "unread");
        row("UPDATE Migration SET version = 2; DROP TABLE Dictionaries", "unread");
    }
    void healsWhatIsDamaged() {
        QFETCH(const QString, statement);
        QFETCH(const int, from);
        QFETCH(const int, overwritten);
        open();
        QVERIFY(works(300));
        for (const QString& part : statement.split(u';', Qt::SkipEmptyParts))
            tests::rows(database(), part);
        close();
        QFile file(m_path);
        QFile aside(m_path + u".damaged"_qs); // there is an older one
        QVERIFY(file.open(QIODevice::ReadWrite) && aside.open(QIODevice::WriteOnly));
        QVERIFY(file.seek(from) && file.write(QByteArray(std::max(overwritten, 0), '\xA5')) >= 0);
        QVERIFY(overwritten >= 0 || file.resize(from));
        file.close();
        const qint64 size = file.size();
        const QString report =
            u"Catalogue database is damaged: %1, moved aside to %2"_qs.arg(m_path, aside.fileName());
        m_watch->allow(report);
        open();
        const bool isAnew = m_watch->lines(report).size() == 1;
        QCOMPARE(QFile(aside.fileName()).size(), isAnew ? size : 0);
        QVERIFY(!QFile::exists(m_path + u"-wal"_qs));
        const bool isRead = m_holder->dictionaryDAO().list().isRight();
        QTEST(isAnew ? u"begun anew"_qs : isRead ? u"kept"_qs : u"unread"_qs, "outcome");
        QCOMPARE(works(), isRead);
    }

    void reportsWhatCannotBeOpened_data() {
        QTest::addColumn<QString>("folder"); // that is there instead
        QTest::newRow("a folder in its place") << QString();
        QTest::newRow("damage that can't be moved") << u".damaged/full"_qs;
    }
    void reportsWhatCannotBeOpened() {
        QFETCH(const QString, folder);
        QVERIFY(QDir(QFileInfo(m_path).path()).removeRecursively());
        QVERIFY(QDir().mkpath(m_path + folder));
        QFile file(m_path);
        if (folder.endsWith(u"full"))
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no database") && file.flush());
        const QString report = u"Can not open database file"_qs + m_path;
        for (const QString& text :
             {report, u", could not be moved to "_qs, u"database not open"_qs, u"sql error: "_qs})
            m_watch->allow(text);
        open();
        QVERIFY(m_holder && !m_holder->isDBValid() && m_holder->dictionaryDAO().list().isLeft());
        QCOMPARE(m_watch->lines(report).size(), 1);
    }

    /// Another process's lock costs a second at opening and nothing after that; its end is noticed.
    void opensLaterWhatIsLocked() {
        open();
        QVERIFY(works());
        close();
        const int ready = ::eventfd(0, 0);
        const pid_t other = ::fork();
        if (other == 0) {
            open();
            tests::rows(database(), u"UPDATE Migration SET version = 0"_qs);
            tests::rows(database(), u"BEGIN EXCLUSIVE"_qs);
            ::eventfd_write(ready, 1);
            ::pause();
        }
        eventfd_t value = 0;
        QCOMPARE(::eventfd_read(ready, &value), 0);
        m_watch->allow(u"sql error: database is locked"_qs);
        QElapsedTimer timer;
        timer.start();
        open();
        QVERIFY(m_holder->isDBValid() && timer.restart() < 2500);
        QVERIFY(m_holder->dictionaryDAO().list().getLeft().toString().contains(u"database is locked"));
        QVERIFY(m_holder->dictionaryDAO().deleteAll().left() && timer.elapsed() < 900);
        ::kill(other, SIGKILL);
        ::waitpid(other, nullptr, 0);
        ::close(ready);
        QCOMPARE(titles(), u"1, 2"_qs);
        QCOMPARE(m_watch->lines().last(), u"Migrated db to 1version"_qs);
        QVERIFY(works());
    }
};

QTEST_GUILESS_MAIN(DbHolderTest)
#include "dbholder_test.moc"
