#include "list_under_test.h"

#include <dictpmplugin/download_mode.h>
#include <dictpmplugin/installed_files.h>

#include <tests/support/seeded_random.h>
#include <vellum/device_state.h>

using namespace tessaly;
using tests::makeRecord;

class ListModelTest : public QObject {
    Q_OBJECT

    std::optional<tests::ListUnderTest> m_list;

private Q_SLOTS:
    void init() { m_list.emplace(); }
    void cleanup() {
        const QStringList unexpected = m_list->watch.unexpected();
        m_list.reset();
        QCOMPARE(unexpected, QStringList());
    }

    void roles() {
        m_list->install(u"bare"_qs, {});
        auto metadata = tests::languages("pt_BR", "zh_tw");
        metadata.insert({{u"provider"_qs, u"Ünïcode & Co"_qs},
                         {u"description"_qs, u"about"_qs},
                         {u"version"_qs, u"7"_qs},
                         {u"thumbnail"_qs, u"http://127.0.0.1/cover.png"_qs},
                         {u"set"_qs, u"a set"_qs},
                         {u"publish_date"_qs, u"2020-02-29"_qs}});
        m_list->install(u"full"_qs, metadata);
        m_list->model.refreshData();
        m_list->model.toggleSelected(1);
        const struct {
            const char* name;
            const char* getter;
            QVariant full; // of the dictionary with all metadata
            QVariant bare; // of the one without any
        } roles[] = {
            {"displayTitle", "getDisplayTitle", u"Portuguese → Chinese (Traditional)"_qs, u"bare"_qs},
            {"title", "getTitle", u"full"_qs, u"bare"_qs},
            {"languageFrom", "getLanguageFrom", u"Portuguese"_qs, u"Other"_qs},
            {"languageIsoFrom", "", u"pt_BR"_qs, QString()},
            {"languageFromPair", "", u"pt_BR|Portuguese"_qs, u"|Other"_qs},
            {"languageTo", "getLanguageTo", u"Chinese (Traditional)"_qs, u"Other"_qs},
            {"languageIsoTo", "", u"zh_tw"_qs, QString()},
            {"provider", "getProvider", u"Ünïcode & Co"_qs, QString()},
            {"description", "getDescription", u"about"_qs, QString()},
            {"hasDescription", "", u"about"_qs, QString()},
            {"version", "getVersion", u"7"_qs, u"0"_qs},
            {"coverUrl", "getCoverUrl", u"http://127.0.0.1/cover.png"_qs, QString()},
            {"selectedToDownload", "isSelected", true, false},
            {"installed", "isInstalled", false, false},
            {"set", "getSet", u"a set"_qs, QString()},
            {"category", "getCategory", u"small"_qs, u"bare"_qs},
        };
        QCOMPARE(m_list->model.roleNames().size(), qsizetype(std::size(roles)));
        const QModelIndex fullIndex = m_list->model.index(1);
        int role = Qt::DisplayRole;
        for (const auto& [name, getter, full, bare] : roles) {
            QCOMPARE(m_list->model.roleNames()[role], QByteArray(name));
            QCOMPARE(fullIndex.data(role), full);
            QCOMPARE(m_list->model.index(0).data(role), bare);
            const int signature = m_list->model.metaObject()->indexOfMethod(QByteArray(getter) + "(int)");
            const QMetaMethod method = m_list->model.metaObject()->method(signature);
            for (const int row : {-1, 1, 2}) {
                QVariant result(method.returnMetaType());
                const QVariant wanted = row == 1 ? full : result;
                QVERIFY(!*getter || method.invoke(&m_list->model,
                                                  QGenericReturnArgument(result.typeName(), result.data()),
                                                  Q_ARG(int, row)));
                QVERIFY2(!*getter || result == wanted, getter);
            }
            role = std::max(role, int(Qt::UserRole)) + 1;
        }
        QVERIFY(!fullIndex.data(Qt::UserRole).isValid() && !fullIndex.data(role).isValid());
        QVERIFY(m_list->model.getHasDescription(1) == true && m_list->model.getHasDescription(2) == false);
        QCOMPARE(m_list->model.getPublishDate(1), u"2020-02-29"_qs);
        QVERIFY(QFile::remove(m_list->fileOf(u"full"_qs)));
        m_list->model.refreshData();
        QVERIFY(!m_list->model.data(fullIndex).isValid()); // no row of this number any more
    }

    void deletesThatFileOnly() {
        const auto inFolder = [this](const char* folder, const QString& file) {
            return QString(m_list->device.path(folder) + u'/' + file);
        };
        const char* const folders[] = {"/ebrmain/dictionaries", "/mnt/secure/dictionaries",
                                       "/mnt/ext1/system/dictionaries", "/mnt/ext2/system/dictionaries"};
        const QString kept = inFolder("/mnt/ext1/Downloads", u"kept"_qs);
        QStringList left = u"* A [ab] a link"_qs.split(u' ');
        for (const char* const folder : folders) {
            for (const QString& file : left)
                writeFile(file == u"link" ? kept : inFolder(folder, file), "x");
            QVERIFY(QFile::link(kept, inFolder(folder, u"link"_qs)));
        }
        for (const char* file : {"../../Downloads/kept", "/mnt/ext1/Downloads/kept", "..", ".", "", "?", "*",
                                 "[ab]", "A", "link"}) {
            dictionary::removeInstalledFile(file);
            left.removeAll(QString::fromUtf8(file));
            for (const char* const folder : folders)
                QCOMPARE(folderContent(m_list->device.path(folder)).keys(), left);
            QVERIFY(QFile::exists(kept));
        }
    }

    void marks() {
        for (const char* name : {"12", "40", "7"})
            m_list->install(QString::fromUtf8(name));
        QCOMPARE(m_list->model.findFirstSelectedToDownload(), -1);
        m_list->catalogue({makeRecord(40), makeRecord(12)});
        m_list->model.refreshData();
        QCOMPARE(m_list->watch.lines(u"DICTS"_qs), QStringList()); // only in the debug mode
        vellum::state::setDebugMode(true);
        m_list->model.toggleSelected(0);
        m_list->model.refreshData();
        QStringList traces = m_list->watch.lines(u"DICTS"_qs);
        for (QString& trace : traces)
            trace = trace.section(u'\n', 0, 0) + u' ' + QString::number(trace.count(u'\n'));
        QCOMPARE(traces,
                 u"DICTS FROM DB (2) 2;DICTS FROM ENUM (3) 3;SEPARATED DICTS (2) 2;"
                 "SEPARATED VL DICTS (1) 1;DICTS IN MODEL (3) 3;NOT INSTALLED DICTS (0) 0"_qs.split(u';'));
        QCOMPARE(m_list->watch.lines(u"{ name: 7, file: 7.tsdict, directory: /mnt/ext1/system"_qs).size(), 2);
        m_list->story();
        for (const int row : {2, 1, 0, -1, 3, 2})
            m_list->model.toggleSelected(row);
        QCOMPARE(m_list->story(), u"selectedCountChanged() "_qs.repeated(4).trimmed());
        QCOMPARE(m_list->model.getSelectedIds(), u"40,12"_qs);
        QCOMPARE(m_list->model.selectedCount(), 2);
        QCOMPARE(m_list->model.findFirstSelectedToDownload(), 0);
        QVERIFY(m_list->model.indexFromServerId(12) == 1 && m_list->model.indexFromServerId(8) == -1);
        QCOMPARE(m_list->model.indexFromDatabaseId(m_list->model.idPair(1).databaseId()), 1);
        for (const auto& [name, row] : {std::pair("12", 1), {"12.tsdict", 1}, {"1", -1}})
            QCOMPARE(m_list->model.findByVLName(QString::fromUtf8(name)), row);
        m_list->model.dump();
        QCOMPARE(m_list->watch.lines(u", selected: "_qs),
                 u"    -  40 , provider:   , selected:  true;    -  12 , provider:   , selected:  true;"
                 "    -  7 , provider:   , selected:  false"_qs.split(u';'));
        m_list->model.reset();
        QCOMPARE(m_list->story(), u"[ ]"_qs);
        QCOMPARE(m_list->model.selectedCount(), 2);
        const auto* const explorer = m_list->model.morphExplorer();
        QVERIFY(explorer->parent() == &m_list->model && explorer == m_list->model.morphExplorer());
        m_list->model.close();
        QCOMPARE(m_list->watch.lines(u"IN stopConnecting"_qs).size(), 1);
    }

    void sortsByLanguageNames() {
        // Each before the next: the languages are compared by name, not by code; none or unknown is "Other".
        const char* const languages[][2] = {{"hy", "fr"}, {"zh_cn", "de"}, {"hr", "de"}, {"de", "en"},
                                            {"de", ""},   {"de", "es"},    {"", "zh"},   {"q!", "de"},
                                            {"zz", "cs"}, {"pt", "en"},    {"pt", "es"}, {"pt_BR", "de"},
                                            {"es", "en"}};
        std::vector<dictionary::DictionaryInfo> sorted;
        const auto set = [](auto& locale, const std::string& code) {
            locale =
                code.empty() ? boost::none : boost::make_optional(utilities::Locale{code.substr(0, 2), {}});
            if (code.size() > 2)
                locale->region = code.substr(3);
        };
        for (const auto& [from, to] : languages) {
            sorted.push_back(makeRecord(int(sorted.size())));
            set(sorted.back().languageFrom, from);
            set(sorted.back().languageTo, to);
        }
        std::mt19937 random = seededRandom();
        for (int i = 0; i < 2000; ++i) {
            auto mixed = sorted;
            std::shuffle(mixed.begin(), mixed.end(), random);
            std::sort(mixed.begin(), mixed.end(), dictionary::comesBefore);
            QVERIFY(std::equal(mixed.begin(), mixed.end(), sorted.begin(),
                               [](const auto& a, const auto& b) { return a.serverId == b.serverId; }));
        }
    }
};

QTEST_GUILESS_MAIN(ListModelTest)
#include "list_model_test.moc"
