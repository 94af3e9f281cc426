#include <common_utilities/either.h>
#include <dictpmplugin/db/dao_error.h>
#include <tests/support/child_process.h>
#include <tests/support/log_watch.h>
#include <utilities/locale.h>

#include <QTest>

using namespace tessaly;
using Nothing = Either<DAOError, void>;

class EitherTest : public QObject {
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
};

QTEST_GUILESS_MAIN(EitherTest)
#include "either_test.moc"
