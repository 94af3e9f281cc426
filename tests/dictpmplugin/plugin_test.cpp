#include "dictionary_files.h"

#include <simulator/fixture/log_watch.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>

#include <QPointer>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QTest>
#include <memory>
#include <optional>

/// The module as it is installed for a device.
class PluginTest : public QObject {
    Q_OBJECT

    tessaly::fixture::TestDevice m_device;
    QTemporaryDir m_installed;
    std::optional<LogWatch> m_watch;

    std::unique_ptr<QQmlEngine> makeEngine() const {
        auto engine = std::make_unique<QQmlEngine>();
        engine->addImportPath(QStringLiteral(TESSALY_QML_DIR)); // for the controls
        engine->addImportPath(m_installed.path());
        return engine;
    }
    static QVariant evaluate(QQmlEngine& engine, const QByteArray& expression) {
        QQmlComponent component(&engine);
        component.setData("import QtQml\nimport com.tessaly.dictionaries 1.0\nQtObject { property "
                          "MorphExplorer named; property var value: " +
                              expression + " }",
                          {});
        const std::unique_ptr<QObject> object(component.create());
        return object ? object->property("value") : component.errorString();
    }

private Q_SLOTS:
    void initTestCase() {
        QCOMPARE(QProcess::execute(QStringLiteral(CMAKE_PROGRAM),
                                   {u"--install"_qs, QStringLiteral(BUILD_FOLDER), u"--component"_qs,
                                    u"product"_qs, u"--prefix"_qs, m_installed.path()}),
                 0);
        const QDir module(m_installed.filePath(u"com/tessaly/dictionaries"_qs));
        for (const QString& line : QString::fromUtf8(readFile(module.filePath(u"qmldir"_qs))).split(u'\n'))
            QVERIFY2(!line.endsWith(u".qml") || module.exists(line.section(u' ', 2)), qPrintable(line));
    }
    void init() { m_watch.emplace(); }
    void cleanup() { QCOMPARE(m_watch->unexpected(), QStringList()); }

    void creates_data() {
        QTest::addColumn<QString>("error"); // the row's name is the type; empty: it can be created
        const auto row = [](const char* type, const char* error = "") {
            QTest::newRow(type) << QString::fromLatin1(error);
        };
        for (const char* const type :
             {"LanguageHeaderInjectorProxyModel", "DictionariesListDialog", "DictionaryInfo",
              "DictionaryInfoPanel", "DictionaryInfoDialog", "DictionaryListItem",
              "ImgBusyIndicatorTextButton", "MorphDonwloadTile", "Controller", "ErrorDialog"})
            row(type);
        row("DataManager", "class registered only for enums");
        row("MorphExplorer", "created from c++ (default in DictionariesListModel singleton)");
        row("MorphFileExistanceMap", "created from c++ (call MorphExplorer::existanceMap)");
        row("MorphUrlMap", "created from c++ (call MorphExplorer::urlMap)");
        row("MorphSecretProvider", "created from c++ (call MorphExplorer::apiKeyProvider)");
        row("DownloadProgress", "DownloadProgress is not a type"); // for the other documents only
        row("DictionarySectionHeader", "DictionarySectionHeader is not a type");
    }
    void creates() {
        const auto engine = makeEngine();
        QQmlComponent component(engine.get());
        component.setData(
            "import com.tessaly.dictionaries 1.0\n" + QByteArray(QTest::currentDataTag()) + " {}", {});
        QTEST(component.isReady() ? QString() : component.errors().first().description(), "error");
        if (!component.isReady())
            return;
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        const auto* const info = object->property("info").value<QObject*>();
        if (info) // of the panel; documents come compiled from the plugin, whatever lies beside it
            QCOMPARE(qmlContext(info)->baseUrl().scheme(), QStringLiteral("qrc"));
    }

    void values_data() {
        QTest::addColumn<QVariant>("expected"); // the row's name is the expression
        QTest::newRow("DataManager.UndefinedError") << QVariant(4);
        QTest::newRow("DictPMController.NoSpaceOnSecureStorage") << QVariant(7);
        QTest::newRow("DictPMController.progress") << QVariant(0);
        QTest::newRow("DictionariesListModel.idPair(0).toString()")
            << QVariant(QStringLiteral("DictionaryId { databaseId: -1, serverId: -1 }"));
        QTest::newRow("DictionariesListModel.morphExplorer.existanceMap.at('xx').value") << QVariant(false);
        QTest::newRow("[DictionariesListModel.deleteDict(999)].length") << QVariant(1);
    }
    void values() {
        m_watch->allow(QStringLiteral("a call from outside failed"));
        QTEST(evaluate(*makeEngine(), QTest::currentDataTag()), "expected");
    }

    void singletonsAreSharedAndStay() {
        for (const char* const type : {"DictionariesListModel", "DictPMController"}) {
            const QPointer<QObject> first = evaluate(*makeEngine(), type).value<QObject*>();
            QVERIFY(first); // although its engine is gone
            QCOMPARE(evaluate(*makeEngine(), type).value<QObject*>(), first.data());
        }
    }

    /// The documentation's example, in the tool that Debian brings.
    void groupsInAStockEngine() {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the tool brings no sanitizer");
#endif
        using namespace tessaly::tests;
        const QString folder = m_device.path(dictionaryFolder);
        writeDictionary(folder + u"a.tsdict"_qs, languages("en", "de"));
        writeDictionary(folder + u"b.tsdict"_qs, languages("de", "en"));
        const QString document = m_installed.filePath(u"texts.qml"_qs);
        writeFile(document, R"(import QtQuick
            Loader {
                source: "file:)" EXAMPLE R"("
                onLoaded: Qt.callLater(() => {
                    const texts = Array.from({ length: item.count }, (_, row) => item.itemAtIndex(row).text)
                    console.log("rows: " + texts.join())
                    Qt.quit()
                })
            })");
        QProcess tool;
        tool.setProcessChannelMode(QProcess::MergedChannels);
        tool.start(QStringLiteral(QML_TOOL), {u"-I"_qs, m_installed.path(), document});
        QVERIFY(tool.waitForFinished(60'000));
        QCOMPARE(QString::fromUtf8(tool.readAll()).section(u"rows: "_qs, 1).trimmed(),
                 u"English,    English → German,German,    German → English"_qs);
    }
};

QTEST_MAIN(PluginTest)
#include "plugin_test.moc"
