#include "list_under_test.h"
#include "script.h"

#include <dictionaries/routes.h>
#include <dictpmplugin/current_dictionary.h>
#include <platform/vellum/testing.h>
#include <vellum/device_state.h>

#include <QJsonArray>
#include <stdexcept>

using namespace tessaly;
using dictionary::CurrentDictionary;
using tests::languages;
using tests::makeRecord;

/// What the list does when it is used, and when something is in the way.
class ListChangesTest : public QObject {
    Q_OBJECT

    std::optional<tests::ListUnderTest> m_list;
    std::vector<dictionary::DictionaryInfo> m_offered; ///< by the server, if it runs
    Script m_script;
    QString m_thrown;

    void installMixed() const {
        m_list->install(u"2"_qs, languages("de", "en"));
        m_list->install(u"b"_qs, languages("fr", "it"));
        m_list->install(u"a"_qs, languages("xx", "de"));
        m_list->install(u"1"_qs);
        std::vector<dictionary::DictionaryInfo> records{makeRecord(3), makeRecord(2, "it", "ru"),
                                                        makeRecord(1, "zz", "de")};
        records[1].name = "Two"; // in the catalogue; the reader knows it by its file
        m_list->catalogue(records);
    }
    void remove(int row) {
        try {
            m_list->model.deleteDict(row);
        } catch (const std::out_of_range&) {
            m_thrown = u"out_of_range "_qs;
        }
    }

    void startServer() {
        m_list->device.startServer();
        m_list->device.setOnline(true);
        m_offered = dictionary::Routes::listDictionaries(dictionary::default_base_url()).getRight();
        QVERIFY(m_offered.size() > 10);
    }
    void set(const char* key, const QJsonValue& value) {
        m_list->device.server().setSwitches({{QString::fromUtf8(key), value}});
    }
    int catalogueRequests() { return m_list->device.server().status()[u"requests"][u"catalogue"].toInt(); }
    /// All but the first are no longer on offer, and that one is installed.
    void installOffered() {
        QJsonArray unlisted;
        for (auto info = m_offered.begin() + 1; info != m_offered.end(); ++info)
            unlisted.append(info->serverId);
        set("unlisted", unlisted);
        tests::writeDictionary(m_list->installed().filePath(QString::fromStdString(m_offered.front().file)),
                               {});
    }

private Q_SLOTS:
    void initTestCase() {
        m_script.add("catalogue", [this](const QString&) { m_list->catalogue({makeRecord(1)}); });
        m_script.add("mixed", [this](const QString&) { installMixed(); });
        m_script.add("abc", [this](const QString&) {
            for (const char* name : {"A", "B", "C"})
                m_list->install(QString::fromUtf8(name));
            m_script.run(u"current A; refresh"_qs);
        });
        m_script.add("install", [this](const QString& name) { m_list->install(name); });
        m_script.add("current", [](const QString& name) {
            QVERIFY(CurrentDictionary(CurrentDictionary::Access::ReadWrite).change(name.toStdString()));
        });
        m_script.add("remove", [this](const QString& name) { QFile::remove(m_list->fileOf(name)); });
        m_script.add("damage", [this](const QString& name) { m_list->store(name, QByteArray(4000, 'x')); });
        m_script.add("lock", [this](const QString&) {
            QDir(m_list->device.path("/mnt/ext1/system/config")).removeRecursively();
        });
        m_script.add("break", [this](const QString&) {
            m_list->tester.reset(); // it accepts no reset that isn't ended
            tests::rows(QSqlDatabase::database(tests::catalogueConnection), u"DROP TABLE Dictionaries"_qs);
        });
        m_script.add("refresh", [this](const QString&) { m_list->model.refreshData(); });
        m_script.add("choose", [this](const QString& row) { m_list->model.chooseDictionary(row.toInt()); });
        m_script.add("offer", [this](const QString&) { m_list->model.setIsDictsAvailForDownload(true); });
        m_script.add("mark", [this](const QString& row) { m_list->model.toggleSelected(row.toInt()); });
        m_script.add("delete", [this](const QString& row) { remove(row.toInt()); });
        m_script.add("offline", [this](const QString&) { m_list->device.setOnline(false); });
        m_script.add("none-new", [this](const QString&) { installOffered(); });
        m_script.add("malformed", [this](const QString&) { set("catalogue", u"malformed"_qs); });
    }
    void init() { m_list.emplace(); }
    void cleanup() {
        const QStringList unexpected = m_list->watch.unexpected();
        m_list.reset();
        QCOMPARE(unexpected, QStringList());
    }

    void changes_data() {
        // The row's name is the script; only what comes after the bar is watched.
        QTest::addColumn<QString>("recorded"); // signals
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("current"); // setting
        QTest::addColumn<QString>("logged");
        const auto row = [](const char* script, const char* recorded, const char* rows, const char* current,
                            const char* logged = "") {
            QTest::newRow(script) << QString::fromUtf8(recorded) << QString::fromUtf8(rows)
                                  << QString::fromUtf8(current) << QString::fromUtf8(logged);
        };
        row("catalogue | refresh", "[ showEmptyScreen() ]", "", "");
        // Catalogued ones first, described by the catalogue, in its order; unknown languages: the title.
        const auto all = "Two: Italian → Russian, 1, a, b: French → Italian";
        row("mixed; current b | refresh",
            "[ ] title(French → Italian) chosen(3) modelRefreshed() title(French → Italian)", all, "b");
        row("mixed; current b; refresh | refresh", "[ ] modelRefreshed() title(French → Italian)", all, "b");
        row("mixed; current 2 | refresh",
            "[ ] title(Italian → Russian) chosen(0) modelRefreshed() title(Italian → Russian)", all, "2");
        row("mixed; current 3; offer | refresh", "[ setIsDictsAvailForDownloadChanged(false) ]", all, "3");
        row("mixed; current b; refresh; remove b | refresh", "[ ] title() chosen(-1)",
            "Two: Italian → Russian, 1, a", "b");
        const auto noMetadata = "Failed to open dictionary to get metadata: ";
        row("damage x; current x | refresh", "[ ] title(x) chosen(0) modelRefreshed() title(x)", "x", "x",
            noMetadata);
        row("damage x; refresh | delete 0", "[ ] showEmptyScreen() dictionaryDeleted(Other, Other (x), 0)",
            "", "");
        row("abc; break | refresh; choose 0; mark 0; delete 0; refresh",
            "out_of_range [ dataManagerError(3) [ dataManagerError(3)", "", "A",
            "error while listing dictionaries; error while listing dictionaries");

        row("abc | choose 1", "title(B) chosen(1) dictonaryChoosed(true)", "A, B, C", "B", "is_ok is: [1]");
        row("abc | choose 0; choose -1; choose 3", "", "A, B, C", "A");
        row("abc; remove B | choose 1", "", "A, B, C", "A", "file `B.tsdict` present in model but not exist");
        row("abc; damage B | choose 1", "", "A, B, C", "A",
            "is_ok is: [0]; is_ok is: [0]; ERROR OPENING DICTIONARY `B` NOT FOUND.");
        row("abc; install D.tsdict; refresh | choose 3", "title(D.tsdict) chosen(3) dictonaryChoosed(true)",
            "A, B, C, D.tsdict", "D.tsdict", "is_ok is: [0]; is_ok is: [1]");
        row("abc; lock | choose 1", "", "A, B, C", "", "is_ok is: [1]; can not write");

        row("abc | delete 0",
            "title(B) chosen(1) dictonaryChoosed(false) [ ] chosen(0) modelRefreshed() title(B) "
            "dictionaryDeleted(English, Other (small), 0)",
            "B, C", "B", "is_ok is: [1]");
        row("abc; choose 2 | delete 2",
            "title(A) chosen(0) dictonaryChoosed(false) [ ] modelRefreshed() title(A) "
            "dictionaryDeleted(English, Other (small), 2)",
            "A, B", "A", "is_ok is: [1]");
        row("abc | delete 1", "[ ] modelRefreshed() title(A) dictionaryDeleted(English, Other (small), 1)",
            "A, C", "A");
        row("abc; delete 2; delete 1 | delete 0",
            "title() chosen(-1) [ ] showEmptyScreen() dictionaryDeleted(English, Other (small), 0)", "", "");
        row("abc | delete -1; delete 3", "out_of_range", "A, B, C", "A");
    }
    void changes() {
        const QString script = QString::fromUtf8(QTest::currentDataTag());
        QFETCH(const QString, logged);
        const QStringList wanted = logged.split(u"; "_qs, Qt::SkipEmptyParts);
        for (const QString& text : wanted)
            m_list->watch.allow(text);
        m_script.run(script.section(u'|', 0, 0));
        m_list->story();
        m_list->watch.clear();
        m_script.run(script.section(u'|', 1));
        QTEST((std::exchange(m_thrown, {}) + m_list->story()).trimmed(), "recorded");
        QStringList lines = m_list->watch.lines();
        lines.removeIf([](const QString& line) { return line.startsWith(u"No display text"); });
        QVERIFY2(std::equal(lines.begin(), lines.end(), wanted.begin(), wanted.end(),
                            [](const QString& line, const QString& part) { return line.contains(part); }),
                 qPrintable(lines.join(u'\n')));
        QTEST(QString::fromStdString(CurrentDictionary(CurrentDictionary::Access::Read).name()), "current");
        QStringList rows;
        for (int row = 0; row < m_list->model.rowCount(); ++row) {
            const QString title = m_list->model.getTitle(row);
            const QString display = m_list->model.getDisplayTitle(row);
            rows << (display == title ? title : title + u": "_qs + display);
        }
        QTEST(rows.join(u", "), "rows");
        QVERIFY(!m_list->tester ||
                m_list->model.choosedDictionaryTitle() ==
                    m_list->model.getDisplayTitle(m_list->model.selectedDictionaryIndex()));
        QCOMPARE(vellum::testing::activeSleepPreventors(), 0);
    }

    void entersDownloadMode_data() {
        QTest::addColumn<QString>("recorded"); // the row's name is what is done before
        QTest::newRow("") << u"connecting(true) connecting(false) [ downloadMode(true) ] modelRefreshed()"_qs;
        QTest::newRow("none-new") << u"connecting(true) noNewDictionaries() toDownloadModFailed()"_qs;
        QTest::newRow("offline") << u"connecting(true) dataManagerError(0) toDownloadModFailed()"_qs;
        QTest::newRow("malformed") << u"connecting(true) dataManagerError(4) toDownloadModFailed()"_qs;
    }
    void entersDownloadMode() {
        QFETCH(const QString, recorded);
        const bool isSuccess = recorded.endsWith(u"modelRefreshed()");
        startServer();
        m_script.run(QString::fromUtf8(QTest::currentDataTag()));
        QString got;
        m_list->model.toDownloadMode();
        QTRY_COMPARE((got += (got.isEmpty() ? QString() : u" "_qs) + m_list->story()).simplified(), recorded);
        QCOMPARE(m_list->model.isDownloadMode(), isSuccess);
        QCOMPARE(m_list->model.isConnectingToNet(), !isSuccess); // stays set, on purpose
        if (!isSuccess)
            return;
        QCOMPARE(m_list->model.getCount(), int(m_offered.size()));
        const auto names = [&](int row) {
            return m_list->model.getLanguageFrom(row) + m_list->model.getLanguageTo(row);
        };
        for (int row = 1; row < m_list->model.getCount(); ++row)
            QVERIFY2(names(row - 1) <= names(row), qPrintable(names(row)));
        m_list->model.toggleSelected(0);
        m_list->model.toDownloadMode();
        QTRY_COMPARE(m_list->model.selectedCount(), 0); // marks are gone with the list
        m_list->story();
        m_list->model.refreshData();
        QCOMPARE(m_list->story(), u"[ downloadMode(false) showEmptyScreen() ]"_qs);
    }

    void refusesWhatComesMeanwhile() {
        startServer();
        m_list->install(u"a"_qs);
        m_list->model.refreshData();
        QCOMPARE(m_list->watch.lines(u"DICTS"_qs), QStringList()); // these traces are for the debug mode
        vellum::state::setDebugMode(true);
        set("delay_ms", 200);
        const int requests = catalogueRequests();
        m_list->story();
        for (int i = 0; i < 3; ++i) {
            m_list->model.toDownloadMode();
            m_list->model.refreshData();
            m_list->model.handleToDownloadModeFinished();
            m_list->model.dump();
            QTest::qWait(50);
        }
        QCOMPARE(m_list->story(), u"connecting(true)"_qs);
        QCOMPARE(m_list->model.getCount(), 1);
        QTRY_VERIFY(m_list->model.isDownloadMode());
        QCOMPARE(catalogueRequests() - requests, 2);
        QCOMPARE(m_list->watch.lines(u"DICTS FROM NET (%1)\n"_qs.arg(m_offered.size())).size(), 1);
    }

    void waitsForTheRefreshThatAsks() {
        startServer();
        const auto ask = [this] {
            m_list->model.toDownloadMode();
            QTest::qSleep(50); // time for a job, if there were one
            QVERIFY(!m_list->model.isConnectingToNet());
            QCOMPARE(vellum::testing::activeSleepPreventors(), 1);
        };
        connect(&m_list->model, &QAbstractItemModel::modelAboutToBeReset, this, ask,
                Qt::SingleShotConnection);
        m_list->model.refreshData();
        QTRY_VERIFY(m_list->model.isDownloadMode());
    }
};

QTEST_GUILESS_MAIN(ListChangesTest)
#include "list_changes_test.moc"
