#include "db/catalogue_rows.h"

#include <dictionaries/routes.h>
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

#include <QSignalSpy>
#include <QTest>
#include <future>
#include <optional>

using namespace tessaly;
using dictionary::ApiError;
using dictionary::DataManager;
using fixture::Fault;

namespace {

constexpr auto agent = "/ebrmain/bin/netagent";
const QString connection = QStringLiteral("dictionary::DBHolder");
constexpr int success = -1; // beside the errors

} // namespace

class DataManagerTest : public QObject {
    Q_OBJECT

    fixture::TestDevice m_device;
    std::optional<LogWatch> m_watch;
    std::shared_ptr<dictionary::DBHolder> m_holder;
    std::optional<DataManager> m_manager;
    QStringList m_offered; ///< by the server: the numbers

    static QSqlDatabase database() { return QSqlDatabase::database(connection, false); }
    void open() {
        m_holder = dictionary::DBHolder::newDefault();
        m_manager.emplace(m_holder);
    }
    void close() {
        m_manager.reset();
        m_holder.reset();
        QSqlDatabase::removeDatabase(connection);
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
        utilities::HttpClient::setDefaultLimits({});
        DataManager::isConnecting = false;
        QFile::remove(m_device.path("/mnt/ext1/system/tsdicts/tsdicts.db"));
        open();
    }
    void cleanup() {
        close();
        QCOMPARE(m_watch->unexpected(), QStringList());
    }

    void connects_data() {
        QTest::addColumn<bool>("isReachable");
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("result"); // 1: connected just now, 0: before, -1: the error
        QTest::newRow("connected before") << true << 2 << 0;
        QTest::newRow("connected now") << true << 1 << 1;
        QTest::newRow("no network") << false << 0 << -1;
    }
    void connects() {
        QFETCH(const bool, isReachable);
        QFETCH(const int, state);
        vellum::state::setNetworkReachable(isReachable);
        vellum::state::setNetState(state);
        m_watch->clear();
        const auto result = DataManager::netConnect();
        QTEST(result.isRight() ? int(result.getRight()) : int(result.getLeft()) - 1, "result");
        QCOMPARE(vellum::state::netState(), isReachable ? 2 : 0);
        QCOMPARE(m_watch->lines().size(), 1);
        QVERIFY(m_watch->lines().first().startsWith(
            u"\033[1;38;2;223;74;138mfunction `static tessaly::Either<DataManager::Error, bool> "
            u"tessaly::dictionary::DataManager::netConnect()` call time: "));
    }

    void mapsErrors() {
        using E = ApiError;
        const ApiError others[] = {{E::ParseError()},       {E::Wait()},
                                   {E::HttpError{7}},       {E::RefreshFailed()},
                                   {E::WrongEmailFormat()}, {E::UndefinedError()}};
        for (const ApiError& error : others)
            QCOMPARE(DataManager::errorFromApiError(error), DataManager::UndefinedError);
        QCOMPARE(DataManager::errorFromApiError({E::CurlError{6}}), DataManager::NetworkError);
    }

    void failuresLeaveTheStoredCatalogue_data() {
        QTest::addColumn<Fault>("fault");  // on the way
        QTest::addColumn<QString>("mode"); // of the server
        QTest::addColumn<int>("error");
        using Kind = Fault::Kind;
        QTest::newRow("refused") << Fault() << u"status:500"_qs << int(DataManager::UndefinedError);
        QTest::newRow("malformed") << Fault() << u"malformed"_qs << int(DataManager::UndefinedError);
        QTest::newRow("wrong type") << Fault() << u"wrong_type"_qs << int(DataManager::UndefinedError);
        QTest::newRow("no server") << Fault() << QString() << int(DataManager::NetworkError);
        QTest::newRow("no network") << Fault() << QString() << int(DataManager::NetworkNotAvailableError);
        const auto row = [](const char* name, const Fault& fault) {
            QTest::newRow(name) << fault << u"normal"_qs << int(DataManager::NetworkError);
        };
        row("reset", {Kind::Reset, 700, 0});
        row("cut off", {Kind::Close, 700, 0});
        row("stalled", {Kind::Stall, 700, 0});
        row("too large", {Kind::Endless, 0, 0});
        row("endless", {Kind::Endless, 0, 100});
    }
    void failuresLeaveTheStoredCatalogue() {
        QFETCH(const Fault, fault);
        QFETCH(const QString, mode);
        QFETCH(const int, error);
        m_holder->dictionaryDAO().addMultiple(tests::makeRecords(3)).qGetOrErr();
        if (!mode.isEmpty())
            m_device.server().setSwitches({{u"catalogue"_qs, mode}});
        if (fault.kind != Fault::Kind::None)
            utilities::HttpClient::setDefaultLimits({2000, 1, 2, 1 << 20});
        fixture::FaultProxy proxy(std::uint16_t(m_device.server().port()));
        proxy.setFault(fault);
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
            QCOMPARE(stored("name, description, dict_set").first(), u"Dictionary 1000000|of old|of old"_qs);
            QCOMPARE(stored("name").filter(u"Dictionary "_qs).size(), 1); // the others are the server's
            QCOMPARE(m_watch->lines(u": left out, "_qs).size(), times);
        }
        QCOMPARE(m_manager->getDictionariesFromDB().getRight().size(), std::size_t(order.size()));
    }

    void databaseErrorsAreOnlyLogged() {
        tests::rows(database(), u"DROP TABLE Dictionaries"_qs);
        m_watch->clear();
        m_watch->allow(u" expected right but "_qs);
        QCOMPARE(synchronize(), success);
        const QStringList lines = m_watch->lines(u" expected right but "_qs);
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines[0].contains(u"[error] expected right but \"error while listing dictionaries\""));
        QVERIFY(lines[1].contains(u"[warn] expected right but \"error while deleting all dictionaries\""));
        QVERIFY(
            lines[2].contains(u"[warn] expected right but \"error while preparing adding dictionaries\""));
    }

    void theNextRunHealsAKilledOne() {
        QCOMPARE(synchronize(), success);
        close();
        const ChildEnd end = runInChild([this] {
            open();
            tests::killInWrite(database(), 6);
            synchronize();
        });
        QCOMPARE(end.signal, SIGKILL);
        open();
        QCOMPARE(stored("dicts_id"), m_offered.first(4));
        QCOMPARE(synchronize(), success);
        QCOMPARE(stored("dicts_id"), m_offered);
    }

    void connectsOnceWithoutADatabase() {
        vellum::state::setNetState(0);
        vellum::state::setConnectDelayMs(60'000);
        database().close();
        m_watch->clear();
        m_manager->stopConnecting();
        const QString line = u"============================================== "_qs;
        QCOMPARE(m_watch->lines(), QStringList(line + u"IN stopConnecting"_qs));

        QCOMPARE(m_manager->getDictionariesFromDB().left(), DataManager::DatabaseFileNotExist);
        QTRY_VERIFY(FindTaskByAppName(agent) > 0);
        const int task = FindTaskByAppName(agent);
        const QString failure =
            u"DataManager::getDictionariesFromDB error: error while listing dictionaries: "_qs;
        m_watch->allow(failure);
        m_watch->allow(u"database not open"_qs);
        QCOMPARE(m_manager->getDictionariesFromDB().left(), DataManager::DatabaseError);
        QCOMPARE(m_watch->records(failure).size(), 1U);
        QCOMPARE(m_watch->records(failure)[0].record.file, "dictpmplugin/data_manager");
        QTest::qWait(50);
        QCOMPARE(FindTaskByAppName(agent), task);

        m_watch->clear();
        m_manager->stopConnecting();
        QCOMPARE(m_watch->lines(),
                 QStringList({line + u"IN stopConnecting"_qs, line + u"SET CLOSE FLAG"_qs}));
        QTRY_COMPARE(FindTaskByAppName(agent), -1);
        vellum::state::setConnectDelayMs(0);
    }

    void aFinishedConnectionRefreshesTheList() {
        close();
        m_watch->allow(u"is still in use"_qs); // the list model's connection stays
        QSignalSpy reset(dictionary::DictionariesListModel::instance(), &QAbstractItemModel::modelReset);
        DataManager manager(std::make_shared<dictionary::DBHolder>(tests::openInMemory()));
        manager.handleConnetingFinished(false);
        QCOMPARE(reset.size(), 0);
        manager.handleConnetingFinished(true);
        QCOMPARE(reset.size(), 1);
    }
};

QTEST_GUILESS_MAIN(DataManagerTest)
#include "data_manager_test.moc"
