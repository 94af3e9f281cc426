#include <platform/vellum/testing.h>
#include <vellum/clock.h>
#include <vellum/vellum.h>

#include <QElapsedTimer>
#include <QTest>
#include <future>

using namespace std::chrono_literals;

class ClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void armingANameAgainReplacesItsTimer() {
        Calls first;
        Calls second;
        Calls other;
        SetHardTimerEx("name", Calls::add, &first, 20);
        SetHardTimerEx("other", Calls::add, &other, 20);
        SetHardTimerEx("name", Calls::add, &second, 60);
        QTRY_COMPARE(second.count, 1);
        QVERIFY(second.timer.elapsed() >= 60);
        QTest::qWait(100);
        QVERIFY(first.count == 0 && second.count == 1 && other.count == 1);
    }

    void firesOnTheApplicationsThread() {
        Calls calls;
        std::async(std::launch::async, [&] { SetHardTimerEx("worker", Calls::add, &calls, 1); }).get();
        QTRY_COMPARE(calls.count, 1);
        QCOMPARE(calls.thread, QThread::currentThread());
    }

    void quittingWakesSleepers() {
        auto sleeper = std::async(std::launch::async, [] {
            vl_sleep(60'000);
            vl_sleep(60'000);
        });
        QCOMPARE(sleeper.wait_for(50ms), std::future_status::timeout);
        vellum::clock::beginQuit();
        QCOMPARE(sleeper.wait_for(5s), std::future_status::ready);
        vellum::testing::resume();
        const QElapsedTimer timer = started();
        vl_sleep(40);
        QVERIFY(timer.elapsed() >= 40);
    }

private:
    static QElapsedTimer started() {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }

    struct Calls {
        static void add(void* calls) {
            ++static_cast<Calls*>(calls)->count;
            static_cast<Calls*>(calls)->thread = QThread::currentThread();
        }
        int count = 0;
        QThread* thread = nullptr;
        QElapsedTimer timer = started();
    };
};

QTEST_GUILESS_MAIN(ClockTest)
#include "clock_test.moc"
