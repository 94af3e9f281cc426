#include "db/catalogue_rows.h"

#include <dictionaries/routes.h>
#include <dictpmplugin/connector.h>
#include <dictpmplugin/db/dbholder.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/log_watch.h>
#include <vellum/device_state.h>
#include <vellum/vellum.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <optional>

using namespace tessaly;
using dictionary::Connector;

class ConnectorTest : public QObject {
    Q_OBJECT

    fixture::TestDevice m_device;
    std::shared_ptr<dictionary::DBHolder> m_holder;
    std::optional<LogWatch> m_watch;
    int m_requestsBefore = 0;
    int m_offered = 0;

    int requests() {
        return m_device.server().status()[u"requests"][u"catalogue"].toInt() - m_requestsBefore;
    }

private Q_SLOTS:
    void initTestCase() {
        m_device.startServer();
        m_offered =
            int(dictionary::Routes::listDictionaries(dictionary::default_base_url()).getRight().size());
        QVERIFY(m_offered > 10);
    }
    void init() {
        m_holder = std::make_shared<dictionary::DBHolder>(tests::openInMemory());
        m_requestsBefore += requests();
        vellum::state::setNetState(0);
        m_watch.emplace();
    }
    void cleanup() {
        m_holder.reset();
        QCOMPARE(m_watch->unexpected(), QStringList());
    }

    void ticks_data() {
        QTest::addColumn<QString>("catalogue");
        QTest::addColumn<bool>("close");
        QTest::addColumn<int>("ticks");
        QTest::addColumn<int>("requests");
        QTest::addColumn<QString>("error");
        QTest::newRow("good") << u"normal"_qs << false << 3 << 3 << QString();
        QTest::newRow("failing") << u"status:500"_qs << false << 33 << 30 << u"HTTP status 500"_qs;
        QTest::newRow("closed") << u"normal"_qs << true << 2 << 0 << QString();
    }
    /// Each tick that gets a catalogue stores it once more.
    void ticks() {
        QFETCH(const QString, catalogue);
        QFETCH(const bool, close);
        QFETCH(const int, ticks);
        QFETCH(const QString, error);
        m_device.server().setSwitches({{u"catalogue"_qs, catalogue}});
        Connector connector(m_holder, nullptr);
        QSignalSpy finished(&connector, &Connector::finished);
        if (close)
            connector.setClose();
        const bool isGood = !close && error.isEmpty();
        for (int tick = 1; tick <= ticks; ++tick) {
            connector.tryConnectToInet();
            QCOMPARE(finished.size(), tick);
            QCOMPARE(finished.last().first().toBool(), isGood);
            QCOMPARE(int(m_holder->dictionaryDAO().list().getRight().size()), isGood ? tick * m_offered : 0);
        }
        QTEST(requests(), "requests");
        const QString line = u"[connector] error while listDictionaries performing: "_qs + error;
        QCOMPARE(m_watch->lines(), QStringList(error.isEmpty() ? 0 : requests(), line));
        vellum::state::setNetState(2);
        connector.tryConnectToInet();
        QCOMPARE(finished.size(), ticks);
    }

    void pollsEverySecondUntilConnected() {
        vellum::state::setConnectDelayMs(60'000);
        Connector connector(m_holder, nullptr);
        QSignalSpy finished(&connector, &Connector::finished);
        QElapsedTimer timer;
        timer.start();
        const int agent = connector.connectToInet();
        QTRY_COMPARE(FindTaskByAppName("/ebrmain/bin/netagent"), agent);
        QVERIFY(finished.wait(10'000));
        connector.setClose();
        const int asked = requests();
        QVERIFY(finished.wait(10'000) && timer.elapsed() >= 1900);
        QCOMPARE(CloseTask(agent, 0, 1), 0);
        for (const int state : {2, 0}) { // the polling ends, and stays ended when the connection is lost
            vellum::state::setNetState(state);
            QVERIFY(!finished.wait(1500));
        }
        QCOMPARE(requests(), asked);
    }
};

QTEST_GUILESS_MAIN(ConnectorTest)
#include "connector_test.moc"
