#include <dictpmplugin/LangUtils.h>
#include <tests/support/child_process.h>
#include <tests/support/log_watch.h>
#include <utilities/locale_parser.h>

#include <QTest>
#include <csignal>
#include <set>

using namespace tessaly::dictionary::langutils;

class LangUtilsTest : public QObject {
    Q_OBJECT

    static Locale locale(const QString& code) {
        return tessaly::utilities::locale_parser::tagged_parse(code.toStdString(), '_').unwrap();
    }

private Q_SLOTS:
    void names_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("zh_tw") << u"Chinese (Traditional)"_qs;
        QTest::newRow("zh_sg") << u"Chinese (Simplified, Singapore)"_qs;
        QTest::newRow("zh_TW") << u"Chinese"_qs;
        QTest::newRow("zh_hk") << u"Chinese"_qs;
        QTest::newRow("zh") << u"Chinese"_qs;
        QTest::newRow("pt_BR") << u"Portuguese"_qs;
        QTest::newRow("en_US") << u"English"_qs;
        QTest::newRow("az") << u"Azerbaijan"_qs;
    }
    void names() {
        QTEST(QString::fromStdString(localeDisplayText(locale(QLatin1String(QTest::currentDataTag())))),
              "name");
    }

    void eachLanguageHasANameOfItsOwn() {
        LogWatch watch; // each of the others is warned of, once
        tessaly::log::setLogFile("/dev/null");
        std::set<std::string> names = {localeDisplayText(locale(u"zh_tw"_qs)),
                                       localeDisplayText(locale(u"zh_cn"_qs)),
                                       localeDisplayText(locale(u"zh_sg"_qs))};
        for (int i = 0; i < 2 * 26 * 26; ++i) {
            const Locale code{{char('a' + i / 26 % 26), char('a' + i % 26)}, boost::none};
            names.insert(displayTextOr(code, "Other"));
        }
        for (const boost::optional<Locale>& none :
             {boost::optional<Locale>(), boost::optional<Locale>(Locale())})
            QCOMPARE(displayTextOr(none, "Other"), "Other");
        tessaly::log::setLogFile("");
        QCOMPARE(names.size(), std::size_t(48 + 3 + 1));
        QCOMPARE(watch.lines().size(), 26 * 26 - 48);
        QCOMPARE(watch.lines(u"No display text for language { lang: xx, region: none }"_qs).size(), 1);
    }

    void anUnknownLanguageEndsTheProcess() {
        const ChildEnd end = runInChild([] { localeDisplayText(locale(u"xx_YY"_qs)); });
        QCOMPARE(end.signal, SIGABRT);
        QVERIFY(end.output.contains(u"Can not find display text for locale: { lang: xx, region: YY }"));
    }
};

QTEST_GUILESS_MAIN(LangUtilsTest)
#include "lang_utils_test.moc"
