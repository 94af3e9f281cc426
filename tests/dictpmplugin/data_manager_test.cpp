#include "db/catalogue_rows.h"
#include "signal_recorder.h"

#include <dictionaries/routes.h>
#include <dictpmplugin/connector.h>
#include <dictpmplugin/data_manager.h>
#include <dictpmplugin/db/dbholder.h>
#include <dictpmplugin/dictionarieslistmodel.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/child_process.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <future>
#include <optional>

using namespace tessaly;
using dictionary::DataManager;
using tests::catalogueConnection;

constexpr auto agent = "/ebrmain/bin/netagent";
constexpr int success = -1; // beside the errors

class DataManagerTest : public QObject {
    Q_OBJECT

    fixture::TestDevice m_device;
    std::optional<LogWatch> m_watch;
    std::shared_ptr<dictionary::DBHolder> m_holder;
    std::optional<DataManager> m_manager;
    QStringList m_offered; ///< by the server: the numbers

    static QSqlDatabase database() { return QSqlDatabase::database(catalogueConnection, false); }
    void open() {
        m_holder = dictionary::DBHolder::newDefault();
        m_manager.emplace(m_holder);
    }
    void close() {
        m_manager.reset();
        m_holder.reset();
        QSqlDatabase::removeDatabase(catalogueConnection);
    }
    static QStringList stored(const char* columns) {
        return tests::rows(database(), u"SELECT %1 FROM Dictionaries"_qs.arg(QLatin1String(columns)));
    }
    int synchronize() {
        const auto error = m_manager->synchronizeMetaData();
        return error ? *error : success;
    }

private Q_SLOTS:
    void initTestCase() {
        m_device.startServer();
        m_device.setOnline(true);
        const auto offered = dictionary::Routes::listDictionaries(dictionary::default_base_url());
        for (const auto& info : offered.getRight())
            m_offered << QString::number(info.serverId);
        QVERIFY(m_offered.size() > 10);
    }
    void init() {
        m_watch.emplace();
        m_watch->allow(u"No db migration preceeded. already migrated"_qs);
        m_device.server().resetSwitches();
        m_device.setServerUrl(m_device.server().url());
        m_device.setOnline(true);
        vellum::state::setConnectDelayMs(60'000);
        DataManager::isConnecting = false;
        QFile::remove(m_device.path("/mnt/ext1/system/tsdicts/tsdicts.db"));
        open();
    }
    void cleanup() {
        close();
        QCOMPARE(m_watch->unexpected(), QStringList());
    }

    void failuresLeaveTheStoredCatalogue() {
        m_holder->dictionaryDAO().addMultiple(tests::makeRecords(3)).qGetOrErr();
        const auto check = [this](int error) {
            const auto fromNet = m_manager->getDictionariesFromNet();
            QVERIFY(synchronize() == error && fromNet.isLeft() && int(fromNet.getLeft()) == error);
            QCOMPARE(stored("dicts_id"), QStringList({u"1"_qs, u"2"_qs, u"3"_qs}));
        };
        for (const auto& answer : {u"status:500"_qs, u"malformed"_qs}) {
            m_device.server().setSwitches({{u"catalogue"_qs, answer}});
            check(DataManager::UndefinedError);
        }
        m_device.setServerUrl(u"http://127.0.0.1:1"_qs);
        check(DataManager::NetworkError);
        m_device.setOnline(false);
        check(DataManager::NetworkNotAvailableError);
    }

    /// On a worker thread, as the list model does it.
    void mergesWithTheStoredCatalogue() {
        auto unlisted = tests::makeRecord(1'000'000);
        unlisted.description = "of old";
        const int first = m_offered.first().toInt();
        const int last = m_offered.last().toInt();
        m_holder->dictionaryDAO()
            .addMultiple({unlisted, tests::makeRecord(last), tests::makeRecord(first)})
            .qGetOrErr();
        m_device.server().setSwitches({{u"catalogue"_qs, u"bad_record"_qs}}); // among the good ones
        m_watch->allow(u": left out, id is not a number in range"_qs);
        const QStringList order =
            QStringList({u"1000000"_qs, m_offered.last()}) + m_offered.first(m_offered.size() - 1);
        for (int times = 1; times <= 2; ++times) {
            QCOMPARE(std::async(std::launch::async, [this] { return synchronize(); }).get(), success);
            QCOMPARE(stored("dicts_id"), order);
            QCOMPARE(stored("name, description, dict_set").first(), u"1000000|of old|of old"_qs);
            QVERIFY(!stored("name").contains(m_offered.last()));    // but the server's name
            QCOMPARE(m_watch->lines(u": left out, "_qs).size(), 1); // the second time it is the same
        }
        QCOMPARE(m_manager->getDictionariesFromDB().getRight().size(), std::size_t(order.size()));
    }

    /// Errors of the database are logged, one for each statement, and end nothing.
    void synchronizesAllTheSame_data() {
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QStringList>("failures");
        QTest::addColumn<int>("surplus"); // of records stored then, beside those offered
        const QString trigger =
            u"CREATE TRIGGER Refuse BEFORE %1 ON Dictionaries BEGIN SELECT RAISE(ABORT, '');"
            " END"_qs;
        QTest::newRow("to delete") << trigger.arg(u"DELETE") << QStringList(u"[warn] deleting all"_qs) << 3;
        QTest::newRow("to add") << trigger.arg(u"INSERT") << QStringList(u"[warn] adding"_qs)
                                << -int(m_offered.size());
        QTest::newRow("all") << u"DROP TABLE Dictionaries"_qs
                             << QStringList({u"[error] listing"_qs, u"[warn] deleting all"_qs,
                                             u"[warn] preparing adding"_qs})
                             << -int(m_offered.size());
    }
    void synchronizesAllTheSame() {
        QFETCH(const QStringList, failures);
        QFETCH(const QString, refusal);
        QFETCH(const int, surplus);
        m_holder->dictionaryDAO().addMultiple(tests::makeRecords(3)).qGetOrErr(); // the server offers them
        tests::rows(database(), refusal);
        m_watch->allow(u" expected right but \"error while "_qs);
        QCOMPARE(synchronize(), success);
        QStringList logged;
        for (const QString& line : m_watch->lines(u" expected right but "_qs))
            logged << line.section(u' ', 1, 1) +
                          line.section(u"error while"_qs, 1).section(u" dictionaries"_qs, 0, 0);
        QCOMPARE(logged, failures);
        QCOMPARE(stored("dicts_id").size(), m_offered.size() + surplus);
    }

    void theUnlistedGoFirstWhenThereAreTooMany() {
        auto unlisted = tests::makeRecords(20'000);
        for (auto& record : unlisted)
            record.serverId += 1'000'000;
        m_holder->dictionaryDAO().addMultiple(unlisted).qGetOrErr();
        QFile installed(m_device.path("/mnt/ext1/system/dictionaries/20000.tsdict"));
        QVERIFY(installed.open(QIODevice::WriteOnly));
        m_watch->allow(u"stored records are left out, 20000 are kept"_qs);
        QCOMPARE(synchronize(), success);
        const QStringList numbers = stored("dicts_id");
        QCOMPARE(numbers.size(), 20'000);
        QCOMPARE(numbers.first(), u"1020000"_qs);
        QVERIFY(std::all_of(m_offered.begin(), m_offered.end(),
                            [&](const QString& offered) { return numbers.contains(offered); }));
        QVERIFY(installed.remove());
    }

    void theNextRunHealsAKilledOne() {
        QCOMPARE(synchronize(), success);
        for (const auto& [write, left] :
             {std::pair(1, m_offered.size()), {2, 0}, {7, 4}}) { // the first deletes, the second begins a log
            close();
            const ChildEnd end = runInChild([this, number = write] {
                open();
                tests::killInWrite(database(), number);
                synchronize();
            });
            QCOMPARE(end.signal, SIGKILL);
            open();
            QCOMPARE(stored("dicts_id"), m_offered.first(left));
            QCOMPARE(synchronize(), success);
            QCOMPARE(stored("dicts_id"), m_offered);
        }
    }

    void netConnectTellsWhetherItConnected() {
        QCOMPARE(DataManager::netConnect().right(), false);
        vellum::state::setNetState(0);
        vellum::state::setConnectDelayMs(0);
        QCOMPARE(DataManager::netConnect().right(), true);
        QCOMPARE(m_watch->lines(u"DataManager::netConnect()` call time: "_qs).size(), 2);
    }

    /// One connection in a process's life, whose first catalogue refreshes the list, until it is closed.
    void connectsInTheBackground() {
        close();
        for (const auto& text : {u"is still in use"_qs, u"database not open"_qs,
                                 u"DataManager::getDictionariesFromDB error: error while listing"_qs})
            m_watch->allow(text); // the list model's connection stays
        const QSignalSpy reset(dictionary::DictionariesListModel::instance(),
                               &QAbstractItemModel::modelReset);
        const auto failures = [this] {
            return m_watch->lines(u"[connector] error while listDict"_qs).size();
        };
        QSqlDatabase db = tests::openInMemory();
        DataManager manager(std::make_shared<dictionary::DBHolder>(db));
        db.close();
        vellum::state::setNetState(0);
        m_device.server().setSwitches({{u"catalogue"_qs, u"status:500"_qs}});
        manager.stopConnecting(); // nothing yet
        const TickRecorder ticks;
        QCOMPARE(manager.getDictionariesFromDB().left(), DataManager::DatabaseFileNotExist);
        QTRY_VERIFY_WITH_TIMEOUT(FindTaskByAppName(agent) > 0, 60'000);
        const int task = FindTaskByAppName(agent);
        QCOMPARE(manager.getDictionariesFromDB().left(), DataManager::DatabaseError);
        QTRY_VERIFY_WITH_TIMEOUT(failures() > 0, 60'000);
        QVERIFY(reset.isEmpty() && FindTaskByAppName(agent) == task);
        m_device.server().resetSwitches();
        QTRY_VERIFY_WITH_TIMEOUT(!reset.isEmpty(), 60'000);
        manager.stopConnecting();
        QTRY_COMPARE_WITH_TIMEOUT(FindTaskByAppName(agent), -1, 60'000);
        const auto told = reset.size();
        const auto ticked = ticks.repeated.size();
        QTRY_VERIFY_WITH_TIMEOUT(ticks.repeated.size() > ticked, 60'000);
        QVERIFY(reset.size() == told && ticks.repeated.count(1000) == ticks.repeated.size());
    }

    /// Each tick that gets a catalogue stores it once more; after thirty ticks nothing is asked any more.
    void ticks() {
        vellum::state::setNetState(0);
        dictionary::Connector connector(m_holder, nullptr);
        const QSignalSpy finished(&connector, &dictionary::Connector::finished);
        const TickRecorder ticks;
        const auto storedAfter = [&](bool isOk) {
            connector.tryConnectToInet();
            return finished.last().first().toBool() == isOk ? stored("dicts_id").size() : -1;
        };
        QCOMPARE(storedAfter(true), m_offered.size());
        QCOMPARE(storedAfter(true), 2 * m_offered.size());
        m_device.server().setSwitches({{u"catalogue"_qs, u"status:500"_qs}});
        for (int tick = 3; tick <= 32; ++tick)
            QCOMPARE(storedAfter(false), 2 * m_offered.size());
        QCOMPARE(m_watch->lines(u"[connector] error while listDictionaries"_qs).size(), 28);
        QCOMPARE(CloseTask(connector.connectToInet(), 0, 1), 0);
        vellum::state::setNetState(2); // the polling ends, and stays ended when the connection is lost
        QTRY_COMPARE_WITH_TIMEOUT(ticks.repeated, QList<int>({1000}), 60'000);
        vellum::state::setNetState(0);
        QTest::qWait(1500);
        QVERIFY(ticks.repeated.size() == 1 && finished.size() == 32);

        m_device.server().resetSwitches();
        dictionary::Connector closed(m_holder, nullptr);
        closed.setClose();
        closed.tryConnectToInet();
        QCOMPARE(stored("dicts_id").size(), 2 * m_offered.size());
    }
};

QTEST_GUILESS_MAIN(DataManagerTest)
#include "data_manager_test.moc"
