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
        const LogWatch watch;
        utilities::FuncTimeMeasurement::prettyLog("f", false, true), QTest::qSleep(12);
        utilities::FuncTimeMeasurement::prettyLog("g", true, false);
        QCOMPARE(watch.lines().size(), 3);
        QCOMPARE(watch.lines().first(), u"function `f` called. awaiting for completion."_qs);
        const auto match = QRegularExpression(u"^function `f` call time: ([0-9.]+) s \\(([0-9]+) ms\\)$"_qs)
                               .match(watch.lines()[1]);
        const double seconds = match.captured(1).toDouble();
        QVERIFY2(seconds >= 0.012 && seconds < 5, qUtf8Printable(watch.lines()[1]));
        QVERIFY(std::abs(seconds * 1000 - match.captured(2).toInt()) < 1.01); // cut, from six digits
        const auto colour = QString::fromStdString(ansicolor::beginSeq(38, 2, 0xDF4A8A, 1));
        QVERIFY(watch.lines()[2].startsWith(colour + u"function `g` call time: "_qs) &&
                watch.lines()[2].endsWith(u" ms)\033[0m"));
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
