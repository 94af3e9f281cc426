#include <common_utilities/defer_sleep.h>
#include <common_utilities/time_measurement.h>
#include <platform/vellum/testing.h>
#include <tests/support/log_watch.h>

#include <QRegularExpression>
#include <QTest>

using namespace tessaly;

class ScopeGuardsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void measuresTheCall() {
        LogWatch watch;
        utilities::FuncTimeMeasurement::prettyLog("f", false, true), QTest::qSleep(12);
        QCOMPARE(watch.lines().size(), 2);
        const QString end = watch.lines().last();
        const double seconds = QRegularExpression(u"^function `f` call time: ([0-9.]+) s \\([0-9]+ ms\\)$"_qs)
                                   .match(end)
                                   .captured(1)
                                   .toDouble();
        QVERIFY2(seconds >= 0.012 && seconds < 5, qUtf8Printable(end));
    }

    void keepsTheDeviceAwake() {
        {
            const DeferSleep outer("outer");
            QCOMPARE(vellum::testing::activeSleepPreventors(), 1);
            { const DeferSleep inner("inner"); }
            QCOMPARE(vellum::testing::activeSleepPreventors(), 1);
        }
        QCOMPARE(vellum::testing::activeSleepPreventors(), 0);
        QCOMPARE(vellum::testing::startedSleepPreventors(), 2);
    }
};

QTEST_GUILESS_MAIN(ScopeGuardsTest)
#include "scope_guards_test.moc"
