#include "simulator/fixture/test_device.h"
#include "tests/support/log_watch.h"

#include <QPointer>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTest>
#include <memory>
#include <optional>

class PluginTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_watch.emplace(); }
    void cleanup() { QCOMPARE(m_watch->unexpected(), QStringList()); }

    void creates_data() {
        QTest::addColumn<QString>("error"); // the row's name is the type; empty: it can be created
        const auto row = [](const char* type, const char* error) {
            QTest::newRow(type) << QString::fromLatin1(error);
        };
        for (const char* const type :
             {"LanguageHeaderInjectorProxyModel", "DictionariesListDialog", "DictionaryInfo",
              "DictionaryInfoPanel", "DictionaryInfoDialog", "DictionaryListItem",
              "ImgBusyIndicatorTextButton", "MorphDonwloadTile", "Controller", "ErrorDialog"})
            row(type, "");
        row("DataManager", "class registered only for enums");
        row("MorphExplorer", "created from c++ (default in DictionariesListModel singleton)");
        row("MorphFileExistanceMap", "created from c++ (call MorphExplorer::existanceMap)");
        row("MorphUrlMap", "created from c++ (call MorphExplorer::urlMap)");
        row("MorphSecretProvider", "created from c++ (call MorphExplorer::apiKeyProvider)");
        row("DownloadProgress", "DownloadProgress is not a type"); // for the other documents only
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
            QPointer<QObject> first;
            {
                const auto one = makeEngine();
                first = evaluate(*one, type).value<QObject*>();
                QVERIFY(first);
                QCOMPARE(evaluate(*makeEngine(), type).value<QObject*>(), first.data());
            }
            QVERIFY(first);
            QCOMPARE(evaluate(*makeEngine(), type).value<QObject*>(), first.data());
        }
    }

private:
    static std::unique_ptr<QQmlEngine> makeEngine() {
        auto engine = std::make_unique<QQmlEngine>();
        engine->addImportPath(QStringLiteral(TESSALY_QML_DIR));
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

    tessaly::fixture::TestDevice m_device;
    std::optional<LogWatch> m_watch;
};

QTEST_MAIN(PluginTest)
#include "plugin_test.moc"
