#include "catalogue_rows.h"

#include <dictpmplugin/db/migration.h>
#include <dictpmplugin/db/script_runner.h>
#include <simulator/fixture/test_device.h>

#include <QFile>
#include <QTest>

using namespace tessaly;
using tests::rows;

class MigrationTest : public QObject {
    Q_OBJECT

    static QString run(const Migration& migration, const QSqlDatabase& db) {
        const auto result = migration.migrate();
        const QString outcome = result.isLeft()     ? result.getLeft().toString()
                                : result.getRight() ? u"done"_qs
                                                    : u"nothing"_qs;
        return outcome + u", at "_qs + rows(db, u"SELECT version FROM Migration"_qs).join(u',');
    }

private Q_SLOTS:
    void splitsScripts_data() {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("count"); // -1: it fails
        QTest::addColumn<QString>("notes");
        QTest::newRow("blanks") << u" \r\n\t "_qs << 0 << QString();
        QTest::newRow("open end") << u"\n\nADD ('a');\r\n \nADD ('b')"_qs << 2 << u"a,b"_qs;
        QTest::newRow("literal") << u"ADD ('a;b'); ADD ('it''s; so');"_qs << 2 << u"a;b,it's; so"_qs;
        QTest::newRow("escaped quote") << u"ADD ('a\\' /* ;' */); ADD ('b');"_qs << 2 << u"a\\,b"_qs;
        QTest::newRow("escaped backslash") << u"ADD ('a\\\\'); ADD ('b');"_qs << 2 << u"a\\\\,b"_qs;
        QTest::newRow("open literal") << u"ADD ('a\\'); ADD ('b');"_qs << -1 << QString();
        QTest::newRow("comment") << u"ADD ('a') -- b; c\n; ADD ('d');"_qs << -1 << u"a"_qs;
    }
    void splitsScripts() {
        QFETCH(QString, script);
        const QSqlDatabase db = tests::openInMemory();
        rows(db, u"CREATE TABLE Notes (text)"_qs);
        const auto executed =
            sqlutils::execScript(db, script.replace(u"ADD"_qs, u"INSERT INTO Notes VALUES"_qs));
        QTEST(executed.isRight() ? executed.getRight() : -1, "count");
        QTEST(rows(db, u"SELECT text FROM Notes"_qs).join(u','), "notes");
    }

    void migrates_data() {
        QTest::addColumn<QString>("first"); // outcome, version then, steps that ran
        QTest::addColumn<QString>("second");
        const auto row = [](const char* before, const char* first, const char* second) {
            QTest::newRow(before) << QString::fromLatin1(first) << QString::fromLatin1(second);
        };
        const char* const noColumn =
            "sql error: table Migration already exists Unable to execute statement, at :";
        // Before it: the table's columns, the version, the step that fails.
        row("", "done, at 3: 1a 1b 3", "nothing, at 3: 1a 1b 3");
        row("version INT=1", "done, at 3: 3", "nothing, at 3: 3");
        row("version INT=9", "nothing, at 9:", "nothing, at 9:");
        row("version INT", "done, at : 1a 1b 3", "done, at : 1a 1b 3 1a 1b 3");
        row("==1b", "1b failed, at 0: 1a 1b", "done, at 3: 1a 1b 1a 1b 3");
        row("version INT=0=3", "3 failed, at 0: 1a 1b 3", "done, at 3: 1a 1b 3 1a 1b 3");
        row("other INT", noColumn, noColumn);
    }
    void migrates() {
        const QStringList before = QString::fromLatin1(QTest::currentDataTag()).split(u'=');
        const QSqlDatabase db = tests::openInMemory();
        Migration migration(db);
        QCOMPARE(migration.migrate().right(), false); // no version is registered yet
        QCOMPARE(db.tables(), QStringList());
        if (!before.first().isEmpty())
            rows(db, u"CREATE TABLE Migration (%1)"_qs.arg(before.first()));
        if (!before.value(1).isEmpty())
            rows(db, u"INSERT INTO Migration VALUES (%1)"_qs.arg(before[1]));
        QString failingStep = before.value(2);
        QString ran;
        for (const auto& [version, step] : {std::pair{3U, u"3"_qs}, {1U, u"1a"_qs}, {1U, u"1b"_qs}}) {
            migration.addVersion(
                version, [&, name = step](const QSqlDatabase&) -> Either<Migration::Error, void> {
                    ran += u' ' + name;
                    if (name == failingStep)
                        return Left<Migration::Error>(Migration::Error(failingStep + u" failed"_qs));
                    return {};
                });
        }
        const QString first = run(migration, db);
        QTEST(first + u':' + ran, "first");
        failingStep.clear();
        const QString second = run(migration, db);
        QTEST(second + u':' + ran, "second");
    }

    void runsScriptFiles() {
        const fixture::TestDevice device;
        const QSqlDatabase db = tests::openInMemory();
        QFile script(device.path("/ebrmain/share/config/made.sql"));
        Migration migration(db);
        migration.addVersion(1, u"${SYSTEMDATA}/config/made.sql"_qs);
        QVERIFY(
            run(migration, db).endsWith(u"(%1)No such file or directory, at 0"_qs.arg(script.fileName())));

        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("CREATE TABLE IF NOT EXISTS Notes (text); INSERT INTO Notes VALUES ('Wörter');"
                     "INSERT INTO Later VALUES (1)");
        script.close();
        QCOMPARE(run(migration, db), u"sql error: no such table: Later Unable to execute statement, at 0"_qs);
        rows(db, u"CREATE TABLE Later (number)"_qs);
        QCOMPARE(run(migration, db), u"done, at 1"_qs);
        QCOMPARE(rows(db, u"SELECT text FROM Notes"_qs), QStringList({u"Wörter"_qs, u"Wörter"_qs}));
    }
};

QTEST_GUILESS_MAIN(MigrationTest)
#include "migration_test.moc"
