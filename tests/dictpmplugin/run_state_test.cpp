#include <dictpmplugin/run_state.h>
#include <simulator/fixture/log_watch.h>

#include <QTest>
#include <thread>

using tessaly::dictionary::RunState;

class RunStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsToTheRunningOne() {
        RunState value;
        const auto first = value.begin();
        QVERIFY(value.setState(first, 2) && !value.setState(first, 2) && value.setError(first, 3));
        QVERIFY(value.setState(6) && value.isOver(first) && !value.setState(first, 3));
        // Cancelled again, while the state is still that of the earlier cancellation.
        const auto second = value.begin();
        QVERIFY(!value.isOver(second) && !value.setState(6) && value.isOver(second));
        QVERIFY(!value.setState(second, 2) && value.state() == 6 && value.error() == 3);
        QVERIFY(value.setState(7) && value.isOver(second)); // whatever comes then
    }

    void refusesWhatDoesNotFit() {
        RunState value;
        const LogWatch watch;
        QVERIFY(!value.setState(65538) && !value.setError(200) && !value.setError(-129));
        QVERIFY(value.state() == 0 && value.error() == 0 && watch.unexpected().size() == 3);
        QVERIFY(value.setState(-32768) && value.setError(127) && value.state() == -32768);
    }

    /// A worker writes as fast as it can while runs are begun and cancelled.
    void staysCancelledUnderFire() {
        RunState value;
        std::atomic<RunState::Run> current{value.begin()};
        const std::jthread worker([&](const std::stop_token& stop) {
            for (int i = 0; !stop.stop_requested(); ++i)
                value.setState(current, 2 + i % 2);
        });
        for (int i = 0; i < 300; ++i) {
            value.setState(1);
            current = value.begin();
            while (value.state() == 1) // and has been told of the run
                std::this_thread::yield();
            value.setState(6);
            std::this_thread::yield();
            QCOMPARE(value.state(), 6);
        }
    }
};

QTEST_APPLESS_MAIN(RunStateTest)
#include "run_state_test.moc"
