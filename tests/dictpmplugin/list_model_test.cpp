#include "dictionary_files.h"
#include "script.h"
#include "signal_recorder.h"

#include <dictpmplugin/current_dictionary.h>
#include <dictpmplugin/db/dictionarydao.h>
#include <dictpmplugin/dictionarieslistmodel.h>
#include <dictpmplugin/dictionary_order.h>
#include <dictpmplugin/installed_files.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/log_watch.h>
#include <vellum/device_state.h>
#include <vellum/sleep_prevention.h>

#include <QAbstractItemModelTester>
#include <QTest>
#include <optional>
#include <random>
#include <stdexcept>

using namespace tessaly;
using dictionary::CurrentDictionary;
using dictionary::DictionariesListModel;
using dictionary::DictionaryInfo;
using tests::languages;
using tests::makeRecord;

using Records = std::vector<DictionaryInfo>;

class ListModelTest : public QObject {
    Q_OBJECT

    std::optional<fixture::TestDevice> m_device;
    std::optional<LogWatch> m_watch;
    std::optional<DictionariesListModel> m_model;
    std::optional<QAbstractItemModelTester> m_tester;
    std::optional<SignalRecorder> m_signals;

    Script m_script;
    QStringList m_thrown;

    QString fileOf(const QString& name) const {
        return m_device->path(tests::dictionaryFolder) + name + u".tsdict"_qs;
    }
    void install(const QString& name, const QMap<QString, QString>& metadata = languages("en", "")) const {
        tests::writeDictionary(fileOf(name), metadata);
    }
    void store(const QString& name, const QByteArray& content) const {
        QFile file(fileOf(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    static void catalogue(const Records& records) {
        const dictionary::DictionaryDAO dao(QSqlDatabase::database(tests::catalogueConnection));
        QVERIFY(dao.addMultiple(records).isRight());
    }
    void installMixed() const {
        install(u"2"_qs, languages("de", "en"));
        install(u"b"_qs, languages("fr", "it"));
        install(u"a"_qs, languages("xx", "de"));
        install(u"1"_qs);
        catalogue({makeRecord(3), makeRecord(2, "it", "ru"), makeRecord(1, "zz", "de")});
    }
    static void setCurrent(const QString& name) {
        QVERIFY(CurrentDictionary(CurrentDictionary::Access::ReadWrite).change(name.toStdString()));
    }
    void remove(int row) {
        try {
            m_model->deleteDict(row);
        } catch (const std::out_of_range&) {
            m_thrown << u"out_of_range"_qs;
        }
    }

private Q_SLOTS:
    void initTestCase() {
        m_script.add("catalogue", [](const QString&) { catalogue({makeRecord(1)}); });
        m_script.add("mixed", [this](const QString&) { installMixed(); });
        m_script.add("abc", [this](const QString&) {
            for (const char* name : {"A", "B", "C"})
                install(QString::fromUtf8(name));
            m_script.run(u"current A; refresh"_qs);
        });
        m_script.add("install", [this](const QString& name) { install(name); });
        m_script.add("current", [](const QString& name) { setCurrent(name); });
        m_script.add("remove", [this](const QString& name) { QFile::remove(fileOf(name)); });
        m_script.add("damage", [this](const QString& name) { store(name, QByteArray(4000, 'x')); });
        m_script.add("lock", [this](const QString&) {
            QDir(m_device->path("/mnt/ext1/system/config")).removeRecursively();
        });
        m_script.add("break", [this](const QString&) {
            m_tester.reset(); // it accepts no reset that isn't ended
            QSqlQuery(QSqlDatabase::database(tests::catalogueConnection)).exec(u"DROP TABLE Dictionaries"_qs);
        });
        m_script.add("refresh", [this](const QString&) { m_model->refreshData(); });
        m_script.add("choose", [this](const QString& row) { m_model->chooseDictionary(row.toInt()); });
        m_script.add("mark", [this](const QString& row) { m_model->toggleSelected(row.toInt()); });
        m_script.add("delete", [this](const QString& row) { remove(row.toInt()); });
        m_script.add("finish", [this](const QString&) { m_model->handleToDownloadModeFinished(); });
        m_script.add("reset", [this](const QString&) { m_model->reset(); });
        m_script.add("close", [this](const QString&) { m_model->close(); });
        m_script.add("flags", [this](const QString& value) {
            m_model->setIsDownloadMode(value.toInt());
            m_model->setIsDictsAvailForDownload(value.toInt());
            m_model->setIsConnectingToNet(value.toInt());
        });
    }
    void init() {
        m_device.emplace();
        m_watch.emplace();
        m_model.emplace();
        m_tester.emplace(&*m_model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        m_signals.emplace(&*m_model);
    }
    void cleanup() {
        const QString unexpected = m_watch->unexpected().join(u'\n');
        m_signals.reset();
        m_tester.reset();
        m_model.reset();
        QSqlDatabase::removeDatabase(tests::catalogueConnection);
        m_watch.reset();
        m_device.reset();
        QCOMPARE(unexpected, QString());
    }

    void roles_data() {
        QTest::addColumn<int>("role");
        QTest::addColumn<QByteArray>("getter");
        QTest::addColumn<QVariant>("full"); ///< of a dictionary with all metadata
        QTest::addColumn<QVariant>("bare"); ///< of one without any
        int number = 0;
        const auto row = [&number](const char* name, const char* getter, const QVariant& full,
                                   const QVariant& bare) {
            QTest::newRow(name) << number << QByteArray(getter) << full << bare;
            number = number == 0 ? 257 : number + 1;
        };
        row("displayTitle", "getDisplayTitle", u"Portuguese → Chinese (Traditional)"_qs, u"bare"_qs);
        row("title", "getTitle", u"full"_qs, u"bare"_qs);
        row("languageFrom", "getLanguageFrom", u"Portuguese"_qs, u"Other"_qs);
        row("languageIsoFrom", "", u"pt_BR"_qs, QString());
        row("languageFromPair", "", u"pt_BR|Portuguese"_qs, u"|Other"_qs);
        row("languageTo", "getLanguageTo", u"Chinese (Traditional)"_qs, u"Other"_qs);
        row("languageIsoTo", "", u"zh_tw"_qs, QString());
        row("provider", "getProvider", u"Ünïcode & Co"_qs, QString());
        row("description", "getDescription", u"about"_qs, QString());
        row("hasDescription", "", u"about"_qs, QString());
        row("version", "getVersion", u"7"_qs, u"0"_qs);
        row("coverUrl", "getCoverUrl", u"http://127.0.0.1/cover.png"_qs, QString());
        row("selectedToDownload", "isSelected", true, false);
        row("installed", "isInstalled", false, false);
        row("set", "getSet", u"a set"_qs, QString());
        row("category", "getCategory", u"small"_qs, QString());
        QTest::newRow("256") << 256 << QByteArray() << QVariant() << QVariant();
        QTest::newRow("272") << 272 << QByteArray() << QVariant() << QVariant();
    }
    void roles() {
        QFETCH(const int, role);
        QFETCH(const QByteArray, getter);
        install(u"bare"_qs, {});
        auto metadata = languages("pt_BR", "zh_tw");
        metadata.insert({{u"provider"_qs, u"Ünïcode & Co"_qs},
                         {u"description"_qs, u"about"_qs},
                         {u"version"_qs, u"7"_qs},
                         {u"thumbnail"_qs, u"http://127.0.0.1/cover.png"_qs},
                         {u"set"_qs, u"a set"_qs},
                         {u"publish_date"_qs, u"2020-02-29"_qs}});
        install(u"full"_qs, metadata);
        m_model->refreshData();
        m_model->toggleSelected(1);
        QTEST(m_model->index(1).data(role), "full");
        QTEST(m_model->index(0).data(role), "bare");
        QVERIFY(!m_model->data(m_model->index(2), role).isValid());
        const QByteArray name = m_model->roleNames().value(role);
        QCOMPARE(name.isEmpty() ? QByteArray::number(role) : name, QByteArray(QTest::currentDataTag()));
        QCOMPARE(m_model->roleNames().size(), 16);
        QCOMPARE(m_model->getHasDescription(1), QVariant(true));
        QCOMPARE(m_model->getHasDescription(2), QVariant(false));
        QCOMPARE(m_model->getPublishDate(1), u"2020-02-29"_qs);
        for (const int index : {-1, 0, 1, 2}) {
            const int signature = m_model->metaObject()->indexOfMethod(getter + "(int)");
            if (signature == -1)
                continue;
            const QMetaMethod method = m_model->metaObject()->method(signature);
            QVariant result(method.returnMetaType());
            QVERIFY(method.invoke(&*m_model, QGenericReturnArgument(result.typeName(), result.data()),
                                  Q_ARG(int, index)));
            const QVariant nothing(method.returnMetaType());
            QCOMPARE(result, index == -1 || index == 2 ? nothing : m_model->index(index).data(role));
        }
    }

    void changes_data() {
        QTest::addColumn<QString>("script");   ///< only what comes after the bar is watched
        QTest::addColumn<QString>("recorded"); ///< signals
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("current"); ///< setting
        QTest::addColumn<QString>("logged");
        const auto row = [](const char* script, const char* recorded, const char* rows, const char* current,
                            const char* logged = "") {
            QTest::newRow(script) << QString::fromUtf8(script) << QString::fromUtf8(recorded)
                                  << QString::fromUtf8(rows) << QString::fromUtf8(current)
                                  << QString::fromUtf8(logged);
        };
        row("catalogue | refresh", "[ showEmptyScreen() ]", "", "");
        // Catalogued ones first, described by the catalogue, in its order; unknown languages: the title.
        const auto all = "2: Italian → Russian, 1, a, b: French → Italian";
        row("mixed; current b | refresh",
            "[ ] title(French → Italian) chosen(3) modelRefreshed() title(French → Italian)", all, "b");
        row("mixed; current b; refresh | refresh", "[ ] modelRefreshed() title(French → Italian)", all, "b");
        row("mixed; current 3 | refresh", "[ ]", all, "3");
        row("mixed; current | refresh", "[ ]", all, "");
        row("mixed; current b; refresh; remove b | refresh", "[ ] title() chosen(-1)",
            "2: Italian → Russian, 1, a", "b");
        row("mixed; flags 1 | refresh",
            "[ isDownloadModeChanged(false) setIsDictsAvailForDownloadChanged(false) ]", all, "");
        row("damage x; damage y; current y | refresh", "[ ] title(y) chosen(1) modelRefreshed() title(y)",
            "x, y", "y",
            "Failed to open dictionary to get metadata: ; Failed to open dictionary to get metadata: ");
        const auto noCatalogue =
            "DataManager::getDictionariesFromDB error: error while listing dictionaries: ";
        row("abc; break | refresh", "[ dataManagerError(3)", "", "A", noCatalogue);
        row("abc; break; refresh | choose 0; mark 0; delete -1; delete 0; refresh",
            "out_of_range [ dataManagerError(3)", "", "A", noCatalogue);

        row("abc | choose 1", "title(B) chosen(1) dictonaryChoosed(true)", "A, B, C", "B",
            "============================ is_ok is: [1]");
        row("abc | choose 0; choose -1; choose 3; choose 4", "", "A, B, C", "A");
        row("abc; remove B | choose 1", "", "A, B, C", "A",
            "file `B.tsdict` present in model but not exist on file system");
        row("abc; damage B | choose 1", "", "A, B, C", "A",
            "============================ is_ok is: [0]; 2 ====================================== is_ok is: "
            "[0]; "
            "ERROR OPENING DICTIONARY `B` NOT FOUND.");
        row("abc; install D.tsdict; refresh | choose 3", "title(D.tsdict) chosen(3) dictonaryChoosed(true)",
            "A, B, C, D.tsdict", "D.tsdict",
            "============================ is_ok is: [0]; 2 ====================================== is_ok is: "
            "[1]");
        row("abc; lock | choose 1", "", "A, B, C", "",
            "============================ is_ok is: [1]; can not write");

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

        row("abc | finish; reset; close", "[ ]", "A, B, C", "A", "= IN stopConnecting");
        row("abc | flags 0; flags 1; flags 1",
            "isDownloadModeChanged(true) setIsDictsAvailForDownloadChanged(true) "
            "isConnectingToNetChanged(true)",
            "A, B, C", "A",
            "=========================== setIsConnectingToNet: 0; =========================== "
            "setIsConnectingToNet was: 0; : 1; was: 0; : 1; was: 1");
    }
    void changes() {
        QFETCH(const QString, script);
        QFETCH(const QString, logged);
        m_watch->allow(u"No display text for language"_qs); // once a thread only
        for (const QString& text : logged.split(u"; "_qs, Qt::SkipEmptyParts))
            m_watch->allow(text);
        m_script.run(script.section(u'|', 0, 0));
        m_signals->take();
        m_thrown.clear();
        m_watch->clear();
        m_script.run(script.section(u'|', 1));

        QString recorded = (m_thrown + m_signals->take()).join(u' ');
        for (const auto& [name, abbreviation] : {std::pair("modelAboutToBeReset()", "["),
                                                 {"modelReset()", "]"},
                                                 {"choosedDictionaryTitleChanged", "title"},
                                                 {"selectedDictionaryIndexChanged", "chosen"}})
            recorded.replace(QLatin1String(name), QLatin1String(abbreviation));
        QTEST(recorded, "recorded");
        QStringList lines = m_watch->lines();
        lines.removeIf([](const QString& line) { return line.startsWith(u"No display text"); });
        const QStringList wanted = logged.split(u"; "_qs, Qt::SkipEmptyParts);
        QVERIFY2(std::equal(lines.begin(), lines.end(), wanted.begin(), wanted.end(),
                            [](const QString& line, const QString& part) { return line.contains(part); }),
                 qPrintable(lines.join(u'\n')));
        QTEST(QString::fromStdString(CurrentDictionary(CurrentDictionary::Access::Read).name()), "current");
        QStringList rows;
        for (int row = 0; row < m_model->rowCount(); ++row) {
            const QString title = m_model->getTitle(row);
            const QString display = m_model->getDisplayTitle(row);
            rows << (display == title ? title : title + u": "_qs + display);
        }
        QTEST(rows.join(u", "), "rows");
        QVERIFY(!m_tester || m_model->choosedDictionaryTitle() ==
                                 m_model->getDisplayTitle(m_model->selectedDictionaryIndex()));
        QCOMPARE(vellum::activeSleepPreventors(), 0);
    }

    void deletesThatFileOnly_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("left");
        const QString all = u"*.tsdict A.tsdict [ab].tsdict a.tsdict kept link.tsdict"_qs;
        for (const QString& file : {u"*.tsdict"_qs, u"[ab].tsdict"_qs, u"A.tsdict"_qs, u"link.tsdict"_qs}) {
            QStringList left = all.split(u' ');
            left.removeAll(file);
            QTest::newRow(qPrintable(file)) << file << left.join(u' ');
        }
        for (const char* file : {"../Downloads/kept", "/mnt/ext1/Downloads/kept", "..", ".", "", "?.tsdict"})
            QTest::newRow(file) << QString::fromUtf8(file) << all;
    }
    void deletesThatFileOnly() {
        QFETCH(const QString, file);
        for (const char* name : {"*", "[ab]", "a", "A"})
            store(QString::fromUtf8(name), "x");
        const QString kept = m_device->path("/mnt/ext1/Downloads/kept");
        QVERIFY(QFile::copy(fileOf(u"a"_qs), kept) && QFile::link(kept, fileOf(u"link"_qs)));
        dictionary::removeInstalledFile(file.toStdString());
        QStringList left = QDir(m_device->path(tests::dictionaryFolder)).entryList(QDir::Files);
        left += QDir(m_device->path("/mnt/ext1/Downloads")).entryList(QDir::Files);
        left.sort();
        QTEST(left.join(u' '), "left");
    }

    void marks() {
        for (const char* name : {"12", "40", "7"})
            install(QString::fromUtf8(name));
        QCOMPARE(m_model->findFirstSelectedToDownload(), -1);
        catalogue({makeRecord(40), makeRecord(12), makeRecord(7)});
        m_model->refreshData();
        m_signals->take();
        for (const int row : {2, 1, 0, -1, 3, 2})
            m_model->toggleSelected(row);
        QCOMPARE(m_signals->take().join(u' '), u"selectedCountChanged() "_qs.repeated(4).trimmed());
        QCOMPARE(m_model->getSelectedIds(), u"40,12"_qs);
        QCOMPARE(m_model->selectedCount(), 2);
        QCOMPARE(m_model->findFirstSelectedToDownload(), 0);
        QCOMPARE(m_model->indexFromServerId(7), 2);
        QCOMPARE(m_model->indexFromServerId(8), -1);
        QCOMPARE(m_model->indexFromDatabaseId(m_model->idPair(1).databaseId()), 1);
        for (const char* name : {"12", "12.tsdict"})
            QCOMPARE(m_model->findByVLName(QString::fromUtf8(name)), 1);
        QCOMPARE(m_model->findByVLName(u"1"_qs), -1);
        QVERIFY(m_model->morphExplorer() == m_model->morphExplorer());
        m_model->dump();
        const QStringList dump = m_watch->lines().mid(m_watch->lines().size() - 7);
        QVERIFY2(dump[0].startsWith(u"-------- DictionariesListModel dump ("_qs),
                 qPrintable(dump.join(u'\n')));
        QVERIFY(dump[2].simplified() == u"- 40 , provider: , selected: true"_qs);
        QVERIFY(dump[4].endsWith(u"false"_qs) && dump[5].contains(u"m_notInstalledDictionaries"_qs));
    }

    void tracesInDebugMode() {
        install(u"1"_qs);
        install(u"x"_qs);
        catalogue({makeRecord(1), makeRecord(2)});
        m_model->refreshData();
        QCOMPARE(m_watch->lines(u"DICTS"_qs), QStringList());
        vellum::state::setDebugMode(true);
        const int preventors = vellum::startedSleepPreventors();
        m_model->refreshData();
        QCOMPARE(vellum::startedSleepPreventors(), preventors + 1);
        QStringList heads;
        for (const QString& text : m_watch->lines(u"DICTS"_qs))
            heads << text.section(u'\n', 0, 0) + u'/' + QString::number(text.count(u'\n'));
        QCOMPARE(heads.join(u' '),
                 u"DICTS FROM DB (2)/2 DICTS FROM ENUM (2)/2 SEPARATED DICTS (1)/1 "
                 "SEPARATED VL DICTS (1)/1 DICTS IN MODEL (2)/2 NOT INSTALLED DICTS (0)/0"_qs);
        QVERIFY(
            m_watch->lines(u"{ name: x, file: x.tsdict, directory: /mnt/ext1/system/dictionaries"_qs).size() >
            0);
    }

    void sortsByLanguageNames() {
        // Each before the next: the languages are compared by name, not by code; none or unknown is "Other".
        Records sorted = {makeRecord(1, "hy", "fr"), makeRecord(2, "zh_cn", "de"), makeRecord(3, "hr", "de"),
                          makeRecord(4, "de", "en"), makeRecord(5, "de", "xx"),    makeRecord(6, "de", "es"),
                          makeRecord(7, "q!", "en"), makeRecord(8, "es", "en")};
        sorted[1].languageFrom = utilities::Locale{"zh", std::string("cn")};
        sorted[4].languageTo = boost::none;
        m_watch->allow(u"No display text for language"_qs);
        Records mixed = sorted;
        std::shuffle(mixed.begin(), mixed.end(), std::mt19937(1));
        std::sort(mixed.begin(), mixed.end(), dictionary::comesBefore);
        for (std::size_t i = 0; i < sorted.size(); ++i)
            QCOMPARE(mixed[i].serverId, sorted[i].serverId);
    }
};

QTEST_GUILESS_MAIN(ListModelTest)
#include "list_model_test.moc"
