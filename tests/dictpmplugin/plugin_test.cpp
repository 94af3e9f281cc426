#include "simulator/fixture/test_device.h"
#include "tests/support/log_watch.h"

#include <QPointer>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTest>
#include <memory>

class PluginTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_watch = std::make_unique<LogWatch>(); }
    void cleanup() {
        const auto watch = std::move(m_watch);
        QCOMPARE(watch->unexpected(), QStringList());
    }

    void creates_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("error"); // empty: it can be created
        const auto uncreatable = [](const char* type, const char* reason) {
            QTest::newRow(type) << QString::fromLatin1(type) << QString::fromLatin1(reason);
        };
        for (const char* const type :
             {"LanguageHeaderInjectorProxyModel", "DictionariesListDialog", "DictionaryInfo",
              "DictionaryInfoPanel", "DictionaryInfoDialog", "DictionaryListItem",
              "ImgBusyIndicatorTextButton", "MorphDonwloadTile", "Controller", "ErrorDialog"})
            uncreatable(type, "");
        uncreatable("DataManager", "class registered only for enums");
        uncreatable("MorphExplorer", "created from c++ (default in DictionariesListModel singleton)");
        uncreatable("MorphFileExistanceMap", "created from c++ (call MorphExplorer::existanceMap)");
        uncreatable("MorphUrlMap", "created from c++ (call MorphExplorer::urlMap)");
        uncreatable("MorphSecretProvider", "created from c++ (call MorphExplorer::apiKeyProvider)");
        uncreatable("DictionarySectionHeader", "DictionarySectionHeader is not a type");
        uncreatable("DownloadProgress", "DownloadProgress is not a type");
        uncreatable("DictionaryIdPair", "DictionaryIdPair is not a type");
    }
    void creates() {
        QFETCH(QString, type);
        QFETCH(QString, error);
        const auto engine = makeEngine();
        QQmlComponent component(engine.get());
        component.setData("import com.tessaly.dictionaries 1.0\n" + type.toUtf8() + " {}", {});
        QCOMPARE(component.isReady() ? QString() : component.errors().first().description(), error);
        if (component.isReady())
            QVERIFY(std::unique_ptr<QObject>(component.create()));
    }

    /// Documents come compiled from the plugin, whatever lies beside it.
    void documentsAreInThePlugin() {
        const auto engine = makeEngine();
        evaluate(*engine, "0");
        for (const char* const document : {"Controller", "DictionarySectionHeader", "DownloadProgress"}) {
            QQmlComponent component(engine.get(),
                                    QUrl(QStringLiteral("qrc:/qml/%1.qml").arg(QLatin1String(document))));
            const std::unique_ptr<QObject> object(component.create());
            QVERIFY2(object, qPrintable(component.errorString()));
        }
        QQmlComponent component(engine.get());
        component.setData("import com.tessaly.dictionaries 1.0\nDictionaryInfoPanel {}", {});
        const std::unique_ptr<QObject> panel(component.create());
        const auto* const child = panel->property("info").value<QObject*>();
        QCOMPARE(qmlContext(child)->baseUrl(), QUrl(QStringLiteral("qrc:/qml/DictionaryInfoPanel.qml")));
    }

    void values_data() {
        QTest::addColumn<QByteArray>("expression");
        QTest::addColumn<QVariant>("expected");
        const auto add = [](const char* expression, const QVariant& expected) {
            QTest::newRow(expression) << QByteArray(expression) << expected;
        };
        add("DataManager.NetworkNotAvailableError", 0);
        add("DataManager.UndefinedError", 4);
        add("DictPMController.NoSpaceOnSecureStorage", 7);
        add("DictPMController.progress", 0);
        add("DictionariesListModel.idPair(0).serverId", -1);
        add("DictionariesListModel.idPair(0).toString()",
            QStringLiteral("DictionaryId { databaseId: -1, serverId: -1 }"));
        add("DictionariesListModel.morphExplorer.existanceMap.at('xx').value", false);
        add("DictionariesListModel.morphExplorer.apiKeyProvider !== null", true);
    }
    void values() {
        QFETCH(QByteArray, expression);
        QTEST(evaluate(*makeEngine(), expression), "expected");
    }

    void metatypeHasItsName() {
        evaluate(*makeEngine(), "0");
        QVERIFY(QMetaType::fromName("DictionaryIdPair").isValid());
    }

    void singletonsAreSharedAndStay_data() {
        QTest::addColumn<QString>("type");
        QTest::newRow("list") << QStringLiteral("DictionariesListModel");
        QTest::newRow("controller") << QStringLiteral("DictPMController");
    }
    void singletonsAreSharedAndStay() {
        QFETCH(QString, type);
        QPointer<QObject> first;
        {
            const auto one = makeEngine();
            const auto other = makeEngine();
            first = evaluate(*one, type.toUtf8()).value<QObject*>();
            QVERIFY(first);
            QVERIFY(!first->parent());
            QCOMPARE(evaluate(*other, type.toUtf8()).value<QObject*>(), first.data());
            const int id = qmlTypeId("com.tessaly.dictionaries", 1, 0, qPrintable(type));
            QCOMPARE(other->singletonInstance<QObject*>(id), first.data());
            QCOMPARE(QJSEngine::objectOwnership(first), QJSEngine::CppOwnership);
        }
        QVERIFY(first);
        QCOMPARE(evaluate(*makeEngine(), type.toUtf8()).value<QObject*>(), first.data());
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
    std::unique_ptr<LogWatch> m_watch;
};

QTEST_MAIN(PluginTest)
#include "plugin_test.moc"
