#include "catalogue_rows.h"

#include <dictpmplugin/db/dbholder.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTest>
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
        using Level = tessaly::log::Level;
        const auto opened = [this](Level level, const char* text) {
            open();
            const auto records = m_watch->records();
            return records.size() == 2 && records[0].level == Level::Trace && records[1].level == level &&
                   records[0].text == "Try to connect to database: " + m_path.toStdString() &&
                   records[1].text == text;
        };
        QVERIFY(opened(Level::Trace, "Migrated db to 1version"));
        QVERIFY(works());
        // All is in the file itself; there is no log to hide or to grow.
        QCOMPARE(QFileInfo(m_path).dir().entryList(QDir::Files), QStringList(u"tsdicts.db"_qs));
        QVERIFY(opened(Level::Error, "No db migration preceeded. already migrated"));
        for (const QString& killedBefore :
             {u"UPDATE Migration SET version = 0"_qs, u"DELETE FROM Migration"_qs}) {
            tests::rows(database(), killedBefore);
            QVERIFY(opened(Level::Trace, "Migrated db to 1version"));
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
        for (const auto& [name, from, overwritten] : {std::tuple("half", 24'000, -1),
                                                      {"header", 0, 100},
                                                      {"format of the schema", 47, 1},
                                                      {"version for writers", 18, 1},
                                                      {"middle", 24'000, 6'000},
                                                      {"length of the free list", 39, 1}})
            QTest::newRow(name) << QString() << from << overwritten << u"begun anew"_qs;
        const auto rename = u"ALTER TABLE %1 RENAME %2 TO x"_qs;
        const auto newer = u"UPDATE Migration SET version = 2;"_qs;
        for (const auto& [name, outcome, statement] :
             {std::tuple("no table", "begun anew", u"DROP TABLE Dictionaries"_qs),
              {"no column", "begun anew", rename.arg(u"Dictionaries", u"thumbnail")},
              {"no version", "begun anew", rename.arg(u"Migration", u"version")},
              {"rows without numbers", "begun anew",
               u"PRAGMA writable_schema=ON;"
               "UPDATE sqlite_schema SET sql = replace(sql, 'INTEGER PRIM', 'X PRIM')"_qs},
              {"wrong code", "begun anew", u"UPDATE Dictionaries SET lang_iso_from = 'e!' WHERE id = 9"_qs},
              {"cut code", "begun anew", u"UPDATE Dictionaries SET lang_iso_to = 'de-' WHERE id = 9"_qs},
              {"no code", "kept", u"UPDATE Dictionaries SET lang_iso_to = ''"_qs},
              {"not migrated", "kept", u"DELETE FROM Migration"_qs},
              {"never migrated", "kept", u"DROP TABLE Migration"_qs},
              {"with a log", "kept", u"PRAGMA journal_mode=WAL"_qs},
              {"newer", "kept", newer},
              {"newer, other columns", "unread", newer + rename.arg(u"Dictionaries", u"thumbnail")},
              {"newer, other tables", "unread", newer + u"DROP TABLE Dictionaries"_qs}})
            QTest::newRow(name) << statement << 0 << 0 << QString::fromLatin1(outcome);
    }
    void healsWhatIsDamaged() {
        QFETCH(const int, from);
        QFETCH(const int, overwritten);
        open();
        QVERIFY(works(300));
        QFETCH(const QString, statement);
        for (const QString& part : statement.split(u';', Qt::SkipEmptyParts))
            tests::rows(database(), part);
        close();
        QByteArray content = readFile(m_path);
        if (overwritten < 0)
            content.truncate(from);
        else
            content.replace(from, overwritten, QByteArray(overwritten, '\xA5'));
        writeFile(m_path, content);
        writeFile(m_path + u".damaged"_qs, {}); // an older one
        const QString report = u"Catalogue database is damaged: %1, moved aside to %1.damaged"_qs.arg(m_path);
        m_watch->allow(report);
        open();
        const bool isAnew = m_watch->lines(report).size() == 1;
        QCOMPARE(readFile(m_path + u".damaged"_qs), isAnew ? content : QByteArray());
        QVERIFY(!QFile::exists(m_path + u"-wal"_qs));
        const bool isRead = m_holder->dictionaryDAO().list().isRight();
        QTEST(isAnew ? u"begun anew"_qs : isRead ? u"kept"_qs : u"unread"_qs, "outcome");
        QCOMPARE(works(), isRead);
    }

    void reportsWhatCannotBeOpened() {
        for (const QString& text : {u", could not be moved to "_qs, u"database not open"_qs,
                                    u"sql error: "_qs, u"Can not open database file"_qs + m_path})
            m_watch->allow(text);
        const auto check = [this] {
            open();
            QVERIFY(m_holder && !m_holder->isDBValid() && m_holder->dictionaryDAO().list().isLeft());
            QCOMPARE(m_watch->lines(u"Can not open database file"_qs + m_path).size(), 1);
        };
        QVERIFY(QDir().mkpath(m_path)); // a folder in its place
        check();
        QVERIFY(QDir().rmdir(m_path));
        writeFile(m_path, "no database");
        writeFile(m_path + u".damaged/full"_qs, {}); // which leaves no room
        check();
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
        int tries = 5; // on a machine that is busy
        do {
            timer.start();
            open();
        } while (timer.elapsed() > 2500 && --tries > 0);
        QVERIFY(m_holder->isDBValid() && tries > 0);
        QVERIFY(m_holder->dictionaryDAO().list().getLeft().toString().contains(u"database is locked"));
        QVERIFY(m_holder->dictionaryDAO().deleteAll().left());
        QCOMPARE(tests::rows(database(), u"PRAGMA busy_timeout"_qs), QStringList(u"0"_qs));
        ::kill(other, SIGKILL);
        ::waitpid(other, nullptr, 0);
        ::close(ready);
        QCOMPARE(titles(), u"1, 2"_qs);
        QCOMPARE(m_watch->lines().last(), u"Migrated db to 1version"_qs);
        QCOMPARE(tests::rows(database(), u"PRAGMA busy_timeout"_qs), QStringList(u"1000"_qs));
        QVERIFY(works());
    }
};

QTEST_GUILESS_MAIN(DbHolderTest)
#include "dbholder_test.moc"
