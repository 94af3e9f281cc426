#include <dictpmplugin/run_state.h>
#include <tests/support/log_watch.h>

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
    }

    void refusesWhatDoesNotFit() {
        RunState value;
        const LogWatch watch;
        QVERIFY(!value.setState(65538) && !value.setError(200) && !value.setError(-129));
        QVERIFY(value.state() == 0 && value.error() == 0 && watch.unexpected().size() == 3);
        QVERIFY(value.setState(-32768) && value.setError(127) && value.state() == -32768);
    }

    /// Workers write as fast as they can while runs are begun and cancelled.
    void staysCancelledUnderFire() {
        RunState value;
        std::atomic<RunState::Run> current{value.begin()};
        std::atomic<bool> stop{false};
        const auto work = [&] {
            for (int i = 0; !stop; ++i) {
                const auto run = current.load();
                value.setState(run, 2 + i % 2);
                value.setError(run, i % 4);
            }
        };
        std::thread workers[] = {std::thread(work), std::thread(work), std::thread(work)};
        int changesOfCancelled = 0;
        int worked = 0;
        for (int i = 0; i < 1000; ++i) {
            value.setState(1);
            current = value.begin();
            for (int wait = 0; wait < 1000 && value.state() == 1; ++wait)
                std::this_thread::yield();
            worked += value.state() == 1 ? 0 : 1;
            value.setState(6);
            const int error = value.error();
            std::this_thread::yield();
            changesOfCancelled += value.state() != 6 || value.error() != error ? 1 : 0;
        }
        stop = true;
        for (std::thread& worker : workers)
            worker.join();
        QCOMPARE(changesOfCancelled, 0);
        QVERIFY(worked > 0);
    }
};

QTEST_APPLESS_MAIN(RunStateTest)
#include "run_state_test.moc"
