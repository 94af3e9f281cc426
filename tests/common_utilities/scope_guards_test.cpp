#include <common_utilities/defer_sleep.h>
#include <common_utilities/time_measurement.h>
#include <tests/support/log_watch.h>
#include <vellum/sleep_prevention.h>

#include <QRegularExpression>
#include <QTest>

using namespace tessaly;

class ScopeGuardsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void measuresTheCall_data() {
        QTest::addColumn<bool>("logStart");
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("plain") << true << QString() << QString();
        QTest::newRow("coloured") << true << u"\033[1;38;2;223;74;138m"_qs << u"\033[0m"_qs;
        QTest::newRow("end only") << false << u"\033[1;38;2;223;74;138m"_qs << u"\033[0m"_qs;
    }
    void measuresTheCall() {
        QFETCH(const bool, logStart);
        QFETCH(const QString, prefix);
        QFETCH(const QString, suffix);
        LogWatch watch;
        utilities::FuncTimeMeasurement::prettyLog("f", !prefix.isEmpty(), logStart), QTest::qSleep(12);
        QStringList lines = watch.lines();
        const QString end = lines.takeLast();
        const QString start = prefix + u"function `f` called. awaiting for completion."_qs + suffix;
        QCOMPARE(lines, logStart ? QStringList(start) : QStringList());
        QCOMPARE(watch.records().back().record.level, log::Level::Trace);

        QVERIFY(end.startsWith(prefix + u"function `f` call time: "_qs) && end.endsWith(u" ms)"_qs + suffix));
        const auto numbers = QRegularExpression(u": ([0-9.]+) s \\(([0-9]+) ms"_qs).match(end);
        const double seconds = numbers.captured(1).toDouble();
        QVERIFY2(seconds >= 0.012 && seconds < 5, qUtf8Printable(end));
        QCOMPARE(numbers.captured(2).toInt(), int(seconds * 1000.0 + 1e-9));
    }

    void keepsTheDeviceAwake() {
        {
            const DeferSleep outer("outer");
            QCOMPARE(vellum::activeSleepPreventors(), 1);
            { const DeferSleep inner("inner"); }
            QCOMPARE(vellum::activeSleepPreventors(), 1);
        }
        QCOMPARE(vellum::activeSleepPreventors(), 0);
        QCOMPARE(vellum::startedSleepPreventors(), 2);
    }
};

QTEST_GUILESS_MAIN(ScopeGuardsTest)
#include "scope_guards_test.moc"
