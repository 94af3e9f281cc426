#include "db/catalogue_rows.h"

#include <dictionaries/routes.h>
#include <dictpmplugin/connector.h>
#include <dictpmplugin/data_manager.h>
#include <dictpmplugin/db/dbholder.h>
#include <dictpmplugin/dictionarieslistmodel.h>
#include <simulator/fixture/fault_proxy.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/child_process.h>
#include <tests/support/log_watch.h>
#include <utilities/http_client.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <future>
#include <optional>

using namespace tessaly;
using dictionary::DataManager;
using tests::catalogueConnection;
using Kind = fixture::Fault::Kind;

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
        utilities::HttpClient::setDefaultLimits({});
        DataManager::isConnecting = false;
        QFile::remove(m_device.path("/mnt/ext1/system/tsdicts/tsdicts.db"));
        open();
    }
    void cleanup() {
        close();
        QCOMPARE(m_watch->unexpected(), QStringList());
    }

    void failuresLeaveTheStoredCatalogue_data() {
        QTest::addColumn<Kind>("fault");   // on the way
        QTest::addColumn<QString>("mode"); // of the server
        QTest::addColumn<int>("error");
        QTest::newRow("refused") << Kind::None << u"status:500"_qs << int(DataManager::UndefinedError);
        QTest::newRow("malformed") << Kind::None << u"malformed"_qs << int(DataManager::UndefinedError);
        QTest::newRow("no server") << Kind::None << QString() << int(DataManager::NetworkError);
        QTest::newRow("no network") << Kind::None << QString() << int(DataManager::NetworkNotAvailableError);
        QTest::newRow("cut off") << Kind::Close << u"normal"_qs << int(DataManager::NetworkError);
        QTest::newRow("stalled") << Kind::Stall << u"normal"_qs << int(DataManager::NetworkError);
    }
    void failuresLeaveTheStoredCatalogue() {
        QFETCH(const Kind, fault);
        QFETCH(const QString, mode);
        QFETCH(const int, error);
        m_holder->dictionaryDAO().addMultiple(tests::makeRecords(3)).qGetOrErr();
        if (!mode.isEmpty())
            m_device.server().setSwitches({{u"catalogue"_qs, mode}});
        utilities::HttpClient::setDefaultLimits({2000, 1, 2, 1 << 20});
        fixture::FaultProxy proxy(std::uint16_t(m_device.server().port()));
        proxy.setFault({fault, 700, 0});
        m_device.setServerUrl(u"http://127.0.0.1:%1"_qs.arg(mode.isEmpty() ? 1 : proxy.port()));
        m_device.setOnline(error != DataManager::NetworkNotAvailableError);
        QCOMPARE(synchronize(), error);
        const auto fromNet = m_manager->getDictionariesFromNet();
        QVERIFY(fromNet.isLeft() && int(fromNet.getLeft()) == error);
        QCOMPARE(stored("dicts_id"), QStringList({u"1"_qs, u"2"_qs, u"3"_qs}));
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

    void connectsOnceWithoutADatabase() {
        vellum::state::setNetState(0);
        database().close();
        m_watch->allow(u"DataManager::getDictionariesFromDB error: error while listing dictionaries: "_qs);
        m_watch->allow(u"database not open"_qs);
        QCOMPARE(m_manager->getDictionariesFromDB().left(), DataManager::DatabaseFileNotExist);
        QTRY_VERIFY(FindTaskByAppName(agent) > 0);
        const int task = FindTaskByAppName(agent);
        QCOMPARE(m_manager->getDictionariesFromDB().left(), DataManager::DatabaseError);
        QTest::qWait(50);
        QCOMPARE(FindTaskByAppName(agent), task);
        m_manager->stopConnecting();
        QTRY_COMPARE(FindTaskByAppName(agent), -1);
    }

    /// Each tick that gets a catalogue stores it once more; after thirty ticks nothing is asked any more.
    void pollsEverySecondUntilConnected() {
        vellum::state::setNetState(0);
        dictionary::Connector connector(m_holder, nullptr);
        QSignalSpy finished(&connector, &dictionary::Connector::finished);
        QElapsedTimer timer;
        timer.start();
        const int task = connector.connectToInet();
        for (const int ticks : {1, 2}) {
            QVERIFY(finished.wait(10'000) && finished.last().first().toBool());
            QCOMPARE(stored("dicts_id").size(), ticks * m_offered.size());
        }
        QVERIFY(timer.elapsed() >= 1900);
        QCOMPARE(CloseTask(task, 0, 1), 0);
        for (const int state : {2, 0}) { // the polling ends, and stays ended when the connection is lost
            vellum::state::setNetState(state);
            QVERIFY(!finished.wait(1500));
        }
        m_device.server().setSwitches({{u"catalogue"_qs, u"status:500"_qs}});
        for (int tick = 3; tick <= 32; ++tick)
            connector.tryConnectToInet();
        QCOMPARE(m_watch->lines(u"[connector] error while listDictionaries"_qs).size(), 28);
        QVERIFY(finished.size() == 32 && !finished.last().first().toBool());

        m_device.server().resetSwitches();
        dictionary::Connector closed(m_holder, nullptr);
        QSignalSpy closedFinished(&closed, &dictionary::Connector::finished);
        closed.setClose();
        closed.tryConnectToInet();
        QVERIFY(closedFinished.size() == 1 && !closedFinished.first().first().toBool());
        QCOMPARE(stored("dicts_id").size(), 2 * m_offered.size());
    }

    void aFinishedConnectionRefreshesTheList() {
        close();
        m_watch->allow(u"is still in use"_qs); // the list model's connection stays
        QSignalSpy reset(dictionary::DictionariesListModel::instance(), &QAbstractItemModel::modelReset);
        m_watch->allow(u"database not open"_qs);
        QSqlDatabase db = tests::openInMemory();
        DataManager manager(std::make_shared<dictionary::DBHolder>(db));
        db.close();
        vellum::state::setNetState(0);
        m_device.server().setSwitches({{u"catalogue"_qs, u"status:500"_qs}});
        QCOMPARE(manager.getDictionariesFromDB().left(), DataManager::DatabaseFileNotExist);
        QTRY_VERIFY(!m_watch->lines(u"[connector] error while listDictionaries"_qs).isEmpty());
        QCOMPARE(reset.size(), 0);
        m_device.server().resetSwitches();
        QVERIFY(reset.wait(5000));
        manager.stopConnecting();
    }
};

QTEST_GUILESS_MAIN(DataManagerTest)
#include "data_manager_test.moc"
