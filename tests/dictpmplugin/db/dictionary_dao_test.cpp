#include "catalogue_rows.h"

#include <dictpmplugin/db/dbholder.h>
#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>

#include <QTest>
#include <optional>
#include <sstream>

using namespace tessaly;
using dictionary::DictionaryInfo;
using tests::makeRecord;

class DictionaryDaoTest : public QObject {
    Q_OBJECT

    const fixture::TestDevice m_device;
    QSqlDatabase m_db;
    std::optional<dictionary::DBHolder> m_holder;
    std::optional<LogWatch> m_watch;

    const dictionary::DictionaryDAO& dao() const { return m_holder->dictionaryDAO(); }
    QStringList rows(const QString& statement) const { return tests::rows(m_db, statement); }
    static QString outcome(const auto& result) {
        return result.isLeft() ? result.left()->toString() : u"success"_qs;
    }

private Q_SLOTS:
    void init() {
        m_watch.emplace();
        m_watch->allow(u"No display text for language { lang: "_qs);
        m_db = tests::openInMemory();
        m_holder.emplace(m_db);
    }
    void cleanup() {
        m_holder.reset();
        m_db = QSqlDatabase();
        QCOMPARE(m_watch->unexpected(), QStringList());
    }

    void writesAndReads() {
        DictionaryInfo full = makeRecord(12, "zh", "pt");
        full.databaseId = 99;
        full.name = "Ein „Wörterbuch“; it's 100 % \\ here";
        full.languageFrom->region = "tw";
        full.languageTo->region = "BR";
        full.version = -3;
        full.thumbnail = "http://127.0.0.1/cover.png";
        full.description = "Zwei\nZeilen";
        full.category = "General";
        full.provider = "FreeDict";
        full.publishDate = "2020-01-01";
        full.dictSet = "Basics";
        DictionaryInfo bare;
        bare.serverId = 7;
        QCOMPARE(outcome(dao().addMultiple({full, bare, makeRecord(8, "tlh", "")})), u"success"_qs);
        QCOMPARE(rows(u"SELECT id, dicts_id, lang_from, lang_iso_from, lang_to, lang_iso_to, dict_set "
                      "FROM Dictionaries"_qs),
                 QStringList({u"1|12|Chinese (Traditional)|zh_tw|Portuguese|pt_BR|Basics"_qs, u"2|7|||||"_qs,
                              u"3|8||tlh|||"_qs}));
        const auto list = dao().list().getRight();
        QCOMPARE(list.size(), 3U);
        full.databaseId = 1;
        full.publishDate.clear();
        full.dictSet = full.description;
        const auto asText = [](const DictionaryInfo& info) {
            std::ostringstream text;
            text << info << info.thumbnail << info.description;
            return QString::fromStdString(text.str());
        };
        QCOMPARE(asText(list[0]), asText(full));
        QVERIFY(list[1].languageFrom && list[1].languageFrom->language.empty() && list[1].languageTo);
        QCOMPARE(list[2].languageFrom->stringify('_'), "tlh");
        QCOMPARE(outcome(dao().deleteAll()), u"success"_qs);
        QCOMPARE(rows(u"SELECT * FROM Dictionaries"_qs), QStringList());
    }

    void failsStatementByStatement() {
        rows(u"CREATE TRIGGER Refuse BEFORE INSERT ON Dictionaries WHEN NEW.dicts_id = 3 "
             "BEGIN SELECT RAISE(ABORT, 'refused'); END"_qs);
        QCOMPARE(outcome(dao().addMultiple(tests::makeRecords(4))),
                 u"error while adding dictionaries: refused Unable to fetch row"_qs);
        QCOMPARE(rows(u"SELECT dicts_id FROM Dictionaries"_qs), QStringList({u"1"_qs, u"2"_qs}));

        // Half a catalogue must not pass for the whole.
        rows(u"ALTER TABLE Dictionaries RENAME TO Old"_qs);
        rows(u"CREATE VIEW Dictionaries AS "
             "SELECT * FROM Old WHERE id < 2 OR abs(-9223372036854775807 - 1) > 0"_qs);
        QVERIFY(outcome(dao().list()).startsWith(u"error while listing dictionaries: integer overflow"));

        rows(u"DROP VIEW Dictionaries"_qs);
        QVERIFY(outcome(dao().deleteAll()).startsWith(u"error while deleting all dictionaries: no such"));
        QVERIFY(outcome(dao().addMultiple({})).startsWith(u"error while preparing adding dictionaries"));
    }
};

QTEST_GUILESS_MAIN(DictionaryDaoTest)
#include "dictionary_dao_test.moc"
