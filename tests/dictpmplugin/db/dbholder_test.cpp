#include "catalogue_rows.h"

#include <dictpmplugin/db/catalogue_file.h>
#include <dictpmplugin/db/dbholder.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/child_process.h>
#include <tests/support/log_watch.h>

#include <QDir>
#include <QTest>
#include <optional>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tessaly;
using dictionary::DBHolder;
using tests::makeRecords;

namespace {

using Damage = std::function<void(QFile& file)>;
const QString connection = QStringLiteral("dictionary::DBHolder");
constexpr auto databasePath = "/mnt/ext1/system/tsdicts/tsdicts.db";

Damage overwrite(double from, qsizetype count) {
    return [=](QFile& file) {
        file.seek(qint64(from * double(file.size())));
        file.write(QByteArray(count, '\xA5'));
    };
}

} // namespace

class DbHolderTest : public QObject {
    Q_OBJECT

    std::optional<fixture::TestDevice> m_device;
    std::optional<LogWatch> m_watch;
    std::shared_ptr<DBHolder> m_holder;
    QString m_path;

    static QSqlDatabase database() { return QSqlDatabase::database(connection, false); }
    void close() {
        m_holder.reset();
        QSqlDatabase::removeDatabase(connection);
    }
    void open() {
        close();
        m_holder = DBHolder::newDefault();
    }
    void openWith(int count) {
        open();
        m_holder->dictionaryDAO().deleteAll().qGetOrErr();
        m_holder->dictionaryDAO().addMultiple(makeRecords(count)).qGetOrErr();
    }
    QStringList titles() const {
        const auto list = m_holder->dictionaryDAO().list();
        QStringList result;
        for (const auto& info : list.getRight())
            result << QString::fromStdString(info.name);
        return result;
    }
    bool works() const {
        const auto& dao = m_holder->dictionaryDAO();
        return m_holder->isDBValid() && dao.deleteAll().isRight() &&
               dao.addMultiple(makeRecords(2)).isRight() &&
               titles() == QStringList({u"Dictionary 1"_qs, u"Dictionary 2"_qs});
    }

private Q_SLOTS:
    void init() {
        m_device.emplace();
        m_path = m_device->path(databasePath);
        m_watch.emplace();
        m_watch->allow(u"No db migration preceeded. already migrated"_qs);
    }
    void cleanup() {
        close();
        QCOMPARE(m_watch->unexpected(), QStringList());
    }

    void createsAndReopens() {
        const QString opening = u"Try to connect to database: "_qs + m_path;
        open();
        QCOMPARE(m_watch->lines(), QStringList({opening, u"Migrated db to 1version"_qs}));
        QVERIFY(!m_watch->records().back().isAlarming && works());
        QCOMPARE(tests::rows(database(), u"PRAGMA journal_mode"_qs), QStringList(u"wal"_qs));
        m_watch->clear();
        open();
        QCOMPARE(m_watch->lines(), QStringList({opening, u"No db migration preceeded. already migrated"_qs}));
        QCOMPARE(m_watch->records().back().record.level, log::Level::Error);
        QCOMPARE(titles().size(), 2);
        for (const QString& killedBefore :
             {u"UPDATE Migration SET version = 0"_qs, u"DELETE FROM Migration"_qs}) {
            tests::rows(database(), killedBefore);
            m_watch->clear();
            open();
            QCOMPARE(m_watch->lines().last(), u"Migrated db to 1version"_qs);
            QCOMPARE(titles().size(), 2);
        }
    }

    void opensOneOfTheReleasedSchema() {
        QVERIFY(QFile::copy(QStringLiteral(TEST_DATA_DIR "/catalogue-v1.db"), m_path));
        open();
        QCOMPARE(m_watch->lines(u"already migrated"_qs).size(), 1);
        QCOMPARE(titles(), QStringList({u"Čeština → English (FreeDict)"_qs, u"Deutsch → Italiano"_qs,
                                        u"英漢字典"_qs, u"Klingon Primer"_qs}));
        const auto list = m_holder->dictionaryDAO().list().getRight();
        QVERIFY(list[2].languageTo->stringify('_') == "zh_tw" && list[3].serverId == 2147483647);
        QVERIFY(works());
    }

    void survivesDamage_data() {
        QTest::addColumn<Damage>("damage");
        QTest::addColumn<bool>("isMovedAside");
        QTest::newRow("no file") << Damage([](QFile& file) { file.rename(file.fileName() + u".away"_qs); })
                                 << false;
        QTest::newRow("empty") << Damage([](QFile& file) { file.resize(0); }) << false;
        QTest::newRow("half a header") << Damage([](QFile& file) { file.resize(50); }) << true;
        QTest::newRow("half") << Damage([](QFile& file) { file.resize(file.size() / 2); }) << true;
        QTest::newRow("cut in a page")
            << Damage([](QFile& file) { file.resize(file.size() - 1000); }) << true;
        QTest::newRow("garbage") << overwrite(0, 99'999) << true;
        QTest::newRow("header") << overwrite(0, 100) << true;
        QTest::newRow("middle") << overwrite(0.5, 6000) << true;
        QTest::newRow("end") << overwrite(0.9, 3000) << true;
    }
    void survivesDamage() {
        QFETCH(const Damage, damage);
        QFETCH(const bool, isMovedAside);
        openWith(300);
        close();
        QFile file(m_path);
        QFile aside(m_path + u".damaged"_qs); // there is an older one
        QVERIFY(file.open(QIODevice::ReadWrite) && aside.open(QIODevice::WriteOnly));
        damage(file);
        const qint64 size = file.size();
        file.close();
        aside.close();
        const QString report =
            u"Catalogue database is damaged: %1, moved aside to %2"_qs.arg(m_path, aside.fileName());
        m_watch->allow(report);
        open();
        QCOMPARE(m_watch->lines(report).size(), isMovedAside ? 1 : 0);
        QCOMPARE(aside.size(), isMovedAside ? size : 0);
        QVERIFY(works());
    }

    void reportsWhatCannotBeOpened_data() {
        QTest::addColumn<QByteArray>("folder"); // that is there instead
        QTest::newRow("no folder") << QByteArray("/mnt");
        QTest::newRow("a folder in its place") << QByteArray(databasePath);
        QTest::newRow("damage that can't be moved") << databasePath + QByteArray(".damaged/full");
    }
    void reportsWhatCannotBeOpened() {
        QFETCH(const QByteArray, folder);
        QVERIFY(QDir(QFileInfo(m_path).path()).removeRecursively() &&
                QDir().mkpath(m_device->path(folder.constData())));
        QFile file(m_path);
        if (folder.endsWith("full"))
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no database") && file.flush());
        const QString report = u"Can not open database file"_qs + m_path;
        for (const QString& text :
             {report, u", could not be moved to "_qs, u"database not open"_qs, u"sql error: "_qs})
            m_watch->allow(text);
        open();
        QVERIFY(m_holder && !m_holder->isDBValid() && m_holder->dictionaryDAO().list().isLeft());
        for (const QString& text : {report, u"sql error: "_qs})
            QCOMPARE(m_watch->lines(text).size(), 1);
    }

    void readsWhatCannotBeWritten() {
        openWith(2);
        close();
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_qs, connection);
        db.setDatabaseName(m_path);
        db.setConnectOptions(u"QSQLITE_OPEN_READONLY"_qs);
        QVERIFY(dictionary::openCatalogueFile(db));
        m_holder = std::make_shared<DBHolder>(db);
        QCOMPARE(titles().size(), 2);
        QVERIFY(
            m_holder->dictionaryDAO().addMultiple(makeRecords(1)).left()->toString().contains(u"readonly"));
    }

    void readsWhatAnotherProcessHasLocked() {
        openWith(2);
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
        QCOMPARE(titles().size(), 2);
        tests::rows(database(), u"PRAGMA busy_timeout = 50"_qs);
        QVERIFY(m_holder->dictionaryDAO().deleteAll().left()->toString().contains(u"database is locked"));
        ::kill(other, SIGKILL);
        ::waitpid(other, nullptr, 0);
        ::close(ready);
        QVERIFY(works());
    }

    void aKilledProcessLeavesAReadableFile() {
        for (const auto& [write, left] : {std::pair{1, 200}, {2, 0}, {151, 149}}) { // the first one deletes
            openWith(200);
            close();
            const ChildEnd end = runInChild([&, number = write] {
                open();
                tests::killInWrite(database(), number);
                m_holder->dictionaryDAO().deleteAll().qGetOrErr();
                m_holder->dictionaryDAO().addMultiple(makeRecords(200)).qGetOrErr();
            });
            QCOMPARE(end.signal, SIGKILL);
            open();
            QCOMPARE(titles().size(), left);
        }
        QVERIFY(works());
    }
};

QTEST_GUILESS_MAIN(DbHolderTest)
#include "dbholder_test.moc"
