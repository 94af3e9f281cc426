#include "../support/bare_device.h"

#include <utilities/cfg_wrapper.h>
#include <utilities/locale_parser.h>
#include <utilities/path_resolver.h>

#include <QFile>
#include <QTest>

using namespace tessaly;
using namespace tessaly::utilities;

class ValuesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parsesLocales_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result"); // empty: an error
        const auto add = [](const char* text, const char* result) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(result);
        };
        add("", "{ lang: , region: none }");
        add("pt", "{ lang: pt, region: none }");
        add("pt_BR", "{ lang: pt, region: BR }");
        add("es_419", "{ lang: es, region: 419 }");
        for (const char* wrong :
             {"p", "pt_", "_BR", "pt-BR", "p1", "pt_BR_x", "ninechars", "pt_B", "тк", " pt", "pt\n"})
            add(wrong, "");
    }
    void parsesLocales() {
        QFETCH(QString, text);
        QFETCH(QString, result);
        const auto locale = locale_parser::tagged_parse(text.toStdString(), '_');
        std::ostringstream shown;
        if (locale.isRight())
            shown << locale.getRight();
        QCOMPARE(QString::fromStdString(shown.str()), result);
        if (locale.isRight())
            QCOMPARE(QString::fromStdString(locale.getRight().stringify('_')), text);
    }

    void saysWhereALocaleIsWrong() {
        std::ostringstream shown;
        shown << locale_parser::tagged_parse("pt-", '-').getLeft();
        QCOMPARE(shown.str(), std::string("locale \"pt-\":3: no region code"));
    }

    void resolvesPaths() {
        const std::string system = m_device.path("/ebrmain/share").toStdString();
        const PathResolver resolver = PathResolver::newDefault();
        QCOMPARE(resolver.resolvePreffix("${SYSTEMDATA}/config/v1.sql"), system + "/config/v1.sql");
        QCOMPARE(resolver.resolvePreffix("${SYSTEMDATA}"), system);
        QCOMPARE(resolver.resolvePreffix("/a/${SYSTEMDATA}"), std::string("/a/${SYSTEMDATA}"));
        QCOMPARE(PathResolver({{std::string("${X}"), "/x"}}).resolvePreffix("${SYSTEMDATA}/y"),
                 std::string("${SYSTEMDATA}/y"));
    }

    void keepsOddValues_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        const char* const texts[] = {"plain", "a=b",    "=",        "two\nlines\r\n", "\\",
                                     "\\n",   "\\\\e=", " spaces ", "Ünïcödé",        "#"};
        for (const char* text : texts) {
            QTest::addRow("value %s", text) << QStringLiteral("key") << QString::fromUtf8(text);
            QTest::addRow("key %s", text) << QString::fromUtf8(text) << QStringLiteral("value");
        }
        QTest::newRow("empty value") << QStringLiteral("key") << QString();
    }
    void keepsOddValues() {
        QFETCH(QString, key);
        QFETCH(QString, value);
        CfgWrapper written("/var/odd.cfg", 1);
        WriteString(written.handle(), "before", "1");
        WriteString(written.handle(), qUtf8Printable(key), qUtf8Printable(value));
        WriteString(written.handle(), "zafter", "2");
        QVERIFY(written.saveAndClose());
        const CfgWrapper read("/var/odd.cfg", 0);
        QCOMPARE(read.readIfExists<std::string>(key.toStdString()), value.toStdString());
        QCOMPARE(read.readIfExists<int>("before"), 1);
        QCOMPARE(read.readIfExists<int>("zafter"), 2);
        QFile::remove(m_device.path("/var/odd.cfg"));
    }

    void readsNumbers_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isNumber");
        QTest::addColumn<int>("number");
        QTest::newRow("zero") << QStringLiteral("0") << true << 0;
        QTest::newRow("negative") << QStringLiteral("-10") << true << -10;
        QTest::newRow("word") << QStringLiteral("done") << false << 0;
        QTest::newRow("word after it") << QStringLiteral("12px") << false << 0;
        QTest::newRow("empty") << QString() << false << 0;
        QTest::newRow("too big") << QStringLiteral("4000000000") << false << 0;
    }
    void readsNumbers() {
        QFETCH(QString, text);
        QFETCH(bool, isNumber);
        CfgWrapper config("/var/numbers.cfg", 1);
        WriteString(config.handle(), "key", qUtf8Printable(text));
        const auto number = config.readIfExists<int>("key");
        QCOMPARE(number.has_value(), isNumber);
        QTEST(number.value_or(0), "number");
        QCOMPARE(ReadInt(config.handle(), "key", -1), isNumber ? *number : -1);
        QVERIFY(!config.readIfExists<int>("other"));
    }

    void savesOnlyWhenAsked() {
        // The second leaves no room for the longer name that it is first written under.
        const std::string longPath = "/var/" + std::string(252, 'n');
        for (const std::string& path : {std::string("/var/kept.cfg"), longPath}) {
            QFile old(m_device.path(path.c_str()));
            QVERIFY(old.open(QIODevice::WriteOnly) && old.write("key=old\n") > 0);
            old.close();
            const auto change = [&path](int mode) {
                CfgWrapper config(path, mode);
                WriteString(config.handle(), "key", "new");
                return config;
            };
            QVERIFY(!change(0).saveAndClose());
            change(1).closeNoSave();
            change(1);
            const bool canSave = path != longPath;
            QCOMPARE(CfgWrapper(path, 0).readIfExists<std::string>("key"), std::string("old"));
            QCOMPARE(change(1).saveAndClose(), canSave);
            QCOMPARE(CfgWrapper(path, 0).readIfExists<std::string>("key"),
                     std::string(canSave ? "new" : "old"));
        }
        QVERIFY(!CfgWrapper("/nowhere/file.cfg", 1).saveAndClose());
        CfgWrapper closed("/var/kept.cfg", 1);
        closed.closeNoSave();
        QVERIFY(!closed.handle() && !closed.readIfExists<std::string>("key") && !closed.saveAndClose());
        QCOMPARE(QDir(m_device.path("/var")).entryList({QStringLiteral("kept.cfg.*")}), QStringList());
    }

private:
    tests::BareDevice m_device;
};

QTEST_GUILESS_MAIN(ValuesTest)
#include "values_test.moc"
