#include "catalogue_rows.h"

#include <dictpmplugin/db/dbholder.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/log_watch.h>

#include <QDir>
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
        open();
        QCOMPARE(m_watch->lines(),
                 QStringList({u"Try to connect to database: "_qs + m_path, u"Migrated db to 1version"_qs}));
        QVERIFY(!m_watch->records().back().isAlarming && works());
        QCOMPARE(tests::rows(database(), u"PRAGMA journal_mode"_qs), QStringList(u"wal"_qs));
        open();
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

    void survivesDamage_data() {
        QTest::addColumn<double>("kept"); // share of the file
        QTest::addColumn<double>("from"); // of what is overwritten
        QTest::addColumn<int>("overwritten");
        QTest::newRow("empty") << 0.0 << 0.0 << 0;
        QTest::newRow("half") << 0.5 << 0.0 << 0;
        QTest::newRow("header") << 1.0 << 0.0 << 100;
        QTest::newRow("middle") << 1.0 << 0.5 << 6000;
    }
    void survivesDamage() {
        QFETCH(const double, kept);
        QFETCH(const double, from);
        QFETCH(const int, overwritten);
        open();
        QVERIFY(works(300));
        close();
        QFile file(m_path);
        QFile aside(m_path + u".damaged"_qs); // there is an older one
        QVERIFY(file.open(QIODevice::ReadWrite) && aside.open(QIODevice::WriteOnly));
        file.seek(qint64(from * double(file.size())));
        file.write(QByteArray(overwritten, '\xA5'));
        file.resize(qint64(kept * double(file.size())));
        file.close();
        const qint64 size = file.size();
        const QString report =
            u"Catalogue database is damaged: %1, moved aside to %2"_qs.arg(m_path, aside.fileName());
        m_watch->allow(report);
        open();
        QCOMPARE(m_watch->lines(report).size(), size > 0 ? 1 : 0);
        QCOMPARE(QFile(aside.fileName()).size(), size);
        QVERIFY(works());
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

    void readsWhatAnotherProcessHasLocked() {
        open();
        QVERIFY(works());
        close();
        const int ready = ::eventfd(0, 0);
        const pid_t other = ::fork();
        if (other == 0) {
            open();
            tests::rows(database(), u"BEGIN EXCLUSIVE"_qs);
            ::eventfd_write(ready, 1);
            ::pause();
        }
        eventfd_t value = 0;
        QCOMPARE(::eventfd_read(ready, &value), 0);
        open();
        QCOMPARE(titles(), u"1, 2"_qs);
        tests::rows(database(), u"PRAGMA busy_timeout = 50"_qs);
        QVERIFY(m_holder->dictionaryDAO().deleteAll().left()->toString().contains(u"database is locked"));
        ::kill(other, SIGKILL);
        ::waitpid(other, nullptr, 0);
        ::close(ready);
        QVERIFY(works());
    }
};

QTEST_GUILESS_MAIN(DbHolderTest)
#include "dbholder_test.moc"
