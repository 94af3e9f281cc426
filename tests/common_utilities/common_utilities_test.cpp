#include <common_utilities/defer_sleep.h>
#include <common_utilities/either.h>
#include <common_utilities/time_measurement.h>
#include <dictpmplugin/db/dao_error.h>
#include <platform/vellum/testing.h>
#include <simulator/fixture/log_watch.h>
#include <tests/support/child_process.h>
#include <utilities/locale.h>

#include <QRegularExpression>
#include <QTest>

using namespace tessaly;
using Nothing = Either<DAOError, void>;

class CommonUtilitiesTest : public QObject {
    Q_OBJECT

    const DAOError m_error{u"error while listing dictionaries"_qs, {u"driver"_qs, u"disk"_qs}};
    const Either<DAOError, int> m_failedNumber = Left<DAOError>(m_error);
    const Nothing m_failedNothing = Left<DAOError>(m_error);

private Q_SLOTS:
    void holdsOneOfTwo() {
        const Either<int, int> error = Left<int>(1);
        const Either<int, int> value = Right<int>(2);
        QVERIFY(error.isLeft() && !error.isRight() && error.left() == 1 && !error.right());
        QVERIFY(value.isRight() && !value.isLeft() && value.right() == 2 && !value.left());
        QVERIFY_THROWS_EXCEPTION(boost::bad_get, error.getRight());
        QVERIFY_THROWS_EXCEPTION(boost::bad_get, value.getLeft());
        QVERIFY(Nothing().isRight() && !Nothing().left());
    }

    void readingAFailureIsLoggedAndMayEndTheProcess() {
        LogWatch watch;
        QCOMPARE((Either<DAOError, int>(Right<int>(1)).qGetOrErr(2)), 1);
        QCOMPARE(watch.lines(), QStringList());
        const auto readNumber = [this] { QCOMPARE(m_failedNumber.qGetOrErr(2), 2); };
        const auto readNothing = [this] { m_failedNothing.qGetOrErr(); };
        readNumber();
        readNothing();
        const QString record = u"\033[31m [%1] expected right but \"error while listing dictionaries\" : "
                               "QSqlError(\"\", \"driver\", \"disk\") \033[0m"_qs;
        QCOMPARE(watch.lines(), QStringList({record.arg(u"error"), record.arg(u"warn")}));
        for (const std::function<void()>& read : {std::function<void()>(readNumber), {readNothing}}) {
            const auto readSwitched = [&] { EitherPrivate::setShouldExitOnError(true), read(); };
            QCOMPARE(runInChild(readSwitched).exitStatus, 255);
        }
    }

    void unwrappingAFailureEndsTheProcess() {
        const ChildEnd end = runInChild([] { utilities::locale_parser::tagged_parse("e!", '_').unwrap(); });
        QCOMPARE(end.exitStatus, 255);
        QVERIFY2(end.output.contains(u": expected right but locale \"e!\":0: no language code"),
                 qUtf8Printable(end.output));
    }

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

QTEST_GUILESS_MAIN(CommonUtilitiesTest)
#include "common_utilities_test.moc"
