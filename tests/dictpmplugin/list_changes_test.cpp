#include "list_under_test.h"

#include <dictionaries/routes.h>
#include <dictpmplugin/current_dictionary.h>
#include <platform/vellum/testing.h>
#include <vellum/device_state.h>

#include <QDir>
#include <QJsonArray>
#include <QRegularExpression>
#include <QThreadPool>
#include <stdexcept>

using namespace tessaly;
using dictionary::CurrentDictionary;
using tests::languages;
using tests::makeRecord;
using Steps = std::function<void()>;

/// What the list does when it is used, and when something is in the way.
class ListChangesTest : public QObject {
    Q_OBJECT

    std::optional<tests::ListUnderTest> m_list;
    std::vector<dictionary::DictionaryInfo> m_offered; ///< by the server, if it runs

    // Steps.
    void refresh() { m_list->model.refreshData(); }
    void mark(int row) { m_list->model.toggleSelected(row); }
    void choose(int row) { m_list->model.chooseDictionary(row); }
    void remove(int row) {
        try {
            m_list->model.deleteDict(row);
        } catch (const std::out_of_range&) {
            m_list->recorder.add(u"out_of_range"_qs);
        }
    }
    /// The file, behind the model's back.
    void uninstall(const char* name) const { QFile::remove(m_list->fileOf(QString::fromUtf8(name))); }
    void damage(const char* name) const {
        writeFile(m_list->fileOf(QString::fromUtf8(name)), QByteArray(4000, 'x'));
    }
    static void use(const char* name) {
        QVERIFY(CurrentDictionary(CurrentDictionary::Access::ReadWrite).change(name));
    }
    /// Only what comes after this is looked at.
    void watch() {
        m_list->story();
        m_list->watch.clear();
    }
    void installMixed(const char* current) const {
        m_list->install(u"2"_qs, languages("de", "en"));
        m_list->install(u"b"_qs, languages("fr", "it"));
        m_list->install(u"a"_qs, languages("xx", "de"));
        m_list->install(u"1"_qs);
        std::vector<dictionary::DictionaryInfo> records{makeRecord(3), makeRecord(2, "it", "ru"),
                                                        makeRecord(1, "zz", "de")};
        records[1].name = "Two"; // in the catalogue; the reader knows it by its file
        m_list->catalogue(records);
        use(current);
    }
    void installABC() {
        for (const auto& name : {u"A"_qs, u"B"_qs, u"C"_qs})
            m_list->install(name);
        use("A"), refresh(), watch();
    }
    void breakCatalogue() {
        m_list->tester.reset(); // it accepts no reset that isn't ended
        tests::rows(QSqlDatabase::database(tests::catalogueConnection), u"DROP TABLE Dictionaries"_qs);
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
        m_list->install(QString::fromStdString(m_offered.front().file).section(u'.', 0, 0));
    }

private Q_SLOTS:
    void init() { m_list.emplace(); }
    void cleanup() {
        const QStringList unexpected = m_list->watch.unexpected();
        m_list.reset();
        QCOMPARE(unexpected, QStringList());
    }

    void changes_data() {
        QTest::addColumn<QString>("expected"); // signals; rows; the setting of the current one
        QTest::addColumn<QString>("logged");
        QTest::addColumn<Steps>("steps");
        const auto row = [](const char* name, const QString& expected, const char* logged,
                            const Steps& steps) {
            QTest::newRow(name) << expected << QString::fromUtf8(logged) << steps;
        };
        row("shows nothing", u"[ showEmptyScreen() ]; ; "_qs, "",
            [this] { m_list->catalogue({makeRecord(1)}), refresh(); });
        // Catalogued ones first, described by the catalogue, in its order; unknown languages: the title.
        const auto mixed = u"%1; Two: Italian → Russian, 1, a, b: French → Italian; %2"_qs;
        const auto italian = u"title(%1 → %2) chosen(%3) modelRefreshed() title(%1 → %2)"_qs;
        row("shows the chosen one", mixed.arg(u"[ ] "_qs + italian.arg(u"French", u"Italian", u"3"), u"b"),
            "", [this] { installMixed("b"), refresh(); });
        row("shows it again", mixed.arg(u"[ ] modelRefreshed() title(French → Italian)", u"b"), "",
            [this] { installMixed("b"), refresh(), watch(), refresh(); });
        row("shows the chosen one of the catalogue",
            mixed.arg(u"[ ] "_qs + italian.arg(u"Italian", u"Russian", u"0"), u"2"), "",
            [this] { installMixed("2"), refresh(); });
        row("shows none chosen", mixed.arg(u"[ setIsDictsAvailForDownloadChanged(false) ]", u"3"), "",
            [this] {
                installMixed("3"), m_list->model.setIsDictsAvailForDownload(true), watch(), refresh();
            });
        row("the chosen one is gone", u"[ ] title() chosen(-1); Two: Italian → Russian, 1, a; b"_qs, "",
            [this] { installMixed("b"), refresh(), uninstall("b"), watch(), refresh(); });
        const auto damaged = "Failed to open dictionary to get metadata: ";
        row("shows a damaged one", u"[ ] title(x) chosen(0) modelRefreshed() title(x); x; x"_qs, damaged,
            [this] { damage("x"), use("x"), refresh(); });
        row("deletes a damaged one",
            u"[ ] [ ] showEmptyScreen() dictionaryDeleted(Other, Other (x), 0); ; "_qs, damaged,
            [this] { damage("x"), refresh(), remove(0); });
        row("the catalogue can't be read",
            u"[ dataManagerError(3) out_of_range [ dataManagerError(3); ; A"_qs,
            "error while listing dictionaries; error while listing dictionaries",
            [this] { installABC(), breakCatalogue(), refresh(), choose(0), mark(0), remove(0), refresh(); });

        row("chooses", u"title(B) chosen(1) dictonaryChoosed(true); A, B, C; B"_qs, "is_ok is: [1]",
            [this] { installABC(), choose(1); });
        row("chooses in vain", u"; A, B, C; A"_qs, "",
            [this] { installABC(), choose(0), choose(-1), choose(3); });
        row("chooses the chosen one of the catalogue", mixed.arg(u"", u"2"), "",
            [this] { installMixed("2"), refresh(), watch(), choose(0); });
        row("chooses a missing one", u"; A, B, C; A"_qs, "file `B.tsdict` present in model but not exist",
            [this] { installABC(), uninstall("B"), choose(1); });
        row("chooses a damaged one", u"; A, B, C; A"_qs,
            "is_ok is: [0]; 2 ==; ERROR OPENING DICTIONARY `B` NOT FOUND.",
            [this] { installABC(), damage("B"), choose(1); });
        row("chooses by the file's name",
            u"title(D.tsdict) chosen(3) dictonaryChoosed(true); A, B, C, D.tsdict; D.tsdict"_qs,
            "is_ok is: [0]; is_ok is: [1]",
            [this] { installABC(), m_list->install(u"D.tsdict"_qs), refresh(), watch(), choose(3); });
        row("can't write what it chooses", u"; A, B, C; "_qs, "is_ok is: [1]; can not write", [this] {
            installABC(), QDir(m_list->device.path("/mnt/ext1/system/config")).removeRecursively(), choose(1);
        });

        const auto next = u"title(%1) chosen(%2) dictonaryChoosed(false) [ ] %3modelRefreshed() title(%1) "
                          "dictionaryDeleted(English, Other (small), %4); %5"_qs;
        row("deletes the chosen one, the first", next.arg(u"B", u"1", u"chosen(0) ", u"0", u"B, C; B"),
            "is_ok is: [1]", [this] { installABC(), remove(0); });
        row("deletes the chosen one, the last", next.arg(u"A", u"0", u"", u"2", u"A, B; A"), "is_ok is: [1]",
            [this] { installABC(), choose(2), watch(), remove(2); });
        row("deletes another one",
            u"[ ] modelRefreshed() title(A) dictionaryDeleted(English, Other (small), 1); A, C; A"_qs, "",
            [this] { installABC(), remove(1); });
        row("deletes the only one",
            u"title() chosen(-1) [ ] showEmptyScreen() dictionaryDeleted(English, Other (small), 0); ; "_qs,
            "", [this] { installABC(), remove(2), remove(1), watch(), remove(0); });
        row("deletes in vain", u"out_of_range; A, B, C; A"_qs, "",
            [this] { installABC(), remove(-1), remove(3); });
    }
    void changes() {
        QFETCH(const Steps, steps);
        QFETCH(const QString, logged);
        const QStringList wanted = logged.split(u"; "_qs, Qt::SkipEmptyParts);
        for (const QString& text : wanted)
            m_list->watch.allow(text);
        steps();
        QStringList rows;
        for (int row = 0; row < m_list->model.rowCount(); ++row) {
            const QString title = m_list->model.getTitle(row);
            const QString display = m_list->model.getDisplayTitle(row);
            rows << (display == title ? title : title + u": "_qs + display);
        }
        const auto current = CurrentDictionary(CurrentDictionary::Access::Read).name();
        QTEST((QStringList{m_list->story(), rows.join(u", "), QString::fromStdString(current)}.join(u"; ")),
              "expected");
        QStringList lines = m_list->watch.lines();
        lines.removeIf([](const QString& line) {
            static const QRegularExpression usual(
                u"^No display text|onnectingToNet| database: |^Migrated"_qs);
            return usual.match(line).hasMatch();
        });
        QVERIFY2(std::equal(lines.begin(), lines.end(), wanted.begin(), wanted.end(),
                            [](const QString& line, const QString& part) { return line.contains(part); }),
                 qPrintable(lines.join(u'\n')));
        QVERIFY(!m_list->tester ||
                m_list->model.choosedDictionaryTitle() ==
                    m_list->model.getDisplayTitle(m_list->model.selectedDictionaryIndex()));
        QCOMPARE(vellum::testing::activeSleepPreventors(), 0);
    }

    void entersDownloadMode_data() {
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<QString>("recorded");
        QTest::newRow("") << Steps([] {})
                          << u"connecting(true) connecting(false) [ downloadMode(true) ] modelRefreshed()"_qs;
        QTest::newRow("nothing new") << Steps([this] { installOffered(); })
                                     << u"connecting(true) noNewDictionaries() toDownloadModFailed()"_qs;
        const auto failed = u"connecting(true) dataManagerError(%1) toDownloadModFailed()"_qs;
        QTest::newRow("offline") << Steps([this] { m_list->device.setOnline(false); }) << failed.arg(0);
        QTest::newRow("malformed") << Steps([this] { set("catalogue", u"malformed"_qs); }) << failed.arg(4);
    }
    void entersDownloadMode() {
        QFETCH(const Steps, steps);
        QFETCH(const QString, recorded);
        const bool isSuccess = recorded.endsWith(u"modelRefreshed()");
        startServer();
        steps();
        QString got;
        m_list->model.toDownloadMode();
        QTRY_COMPARE_WITH_TIMEOUT(
            (got += (got.isEmpty() ? QString() : u" "_qs) + m_list->story()).simplified(), recorded, 60'000);
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
        mark(0);
        m_list->model.toDownloadMode();
        QTRY_COMPARE_WITH_TIMEOUT(m_list->model.selectedCount(), 0, 60'000); // marks are gone with the list
        m_list->story();
        refresh();
        QCOMPARE(m_list->story(), u"[ downloadMode(false) showEmptyScreen() ]"_qs);
    }

    void refusesWhatComesMeanwhile() {
        startServer();
        m_list->install(u"a"_qs);
        refresh();
        vellum::state::setDebugMode(true);
        set("delay_ms", 200);
        const int requests = catalogueRequests();
        m_list->story();
        for (int i = 0; i < 3; ++i) {
            m_list->model.toDownloadMode();
            refresh();
            m_list->model.handleToDownloadModeFinished();
            m_list->model.dump();
            QTest::qWait(50);
        }
        QCOMPARE(m_list->story(), u"connecting(true)"_qs);
        QCOMPARE(m_list->model.getCount(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(m_list->model.isDownloadMode(), 60'000);
        QCOMPARE(catalogueRequests() - requests, 2);
        QCOMPARE(m_list->watch.lines(u"DICTS FROM NET (%1)\n"_qs.arg(m_offered.size())).size(), 1);
    }

    void waitsForTheRefreshThatAsks() {
        startServer();
        const auto ask = [this] {
            m_list->model.toDownloadMode();
            QCOMPARE(QThreadPool::globalInstance()->activeThreadCount(), 0); // no job yet
            QCOMPARE(vellum::testing::activeSleepPreventors(), 1);
        };
        connect(&m_list->model, &QAbstractItemModel::modelAboutToBeReset, this, ask,
                Qt::SingleShotConnection);
        refresh();
        QTRY_VERIFY_WITH_TIMEOUT(m_list->model.isDownloadMode(), 60'000);
    }
};

QTEST_GUILESS_MAIN(ListChangesTest)
#include "list_changes_test.moc"
