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

    static std::string nameOf(const char* code) {
        return localeDisplayText(tessaly::utilities::locale_parser::tagged_parse(code, '_').unwrap());
    }

private Q_SLOTS:
    void regionsMatterOnlyAsStored() {
        QCOMPARE(nameOf("zh_tw"), "Chinese (Traditional)");
        QCOMPARE(nameOf("zh_sg"), "Chinese (Simplified, Singapore)");
        for (const char* const code : {"zh_TW", "zh_hk", "zh"})
            QCOMPARE(nameOf(code), "Chinese");
        QCOMPARE(nameOf("pt_BR"), "Portuguese");
    }

    void eachLanguageHasANameOfItsOwn() {
        LogWatch watch; // each of the others is warned of, once
        tessaly::log::setLogFile("/dev/null");
        std::set<std::string> names = {nameOf("zh_tw"), nameOf("zh_cn"), nameOf("zh_sg")};
        for (int i = 0; i < 2 * 26 * 26; ++i) {
            const Locale code{{char('a' + i / 26 % 26), char('a' + i % 26)}, boost::none};
            names.insert(displayTextOr(code, "Other"));
        }
        tessaly::log::setLogFile("");
        QCOMPARE(displayTextOr(boost::none, "Other") + displayTextOr(Locale(), "Other"), "OtherOther");
        QCOMPARE(names.size(), std::size_t(48 + 3 + 1));
        QCOMPARE(watch.lines().size(), 26 * 26 - 48);
        QCOMPARE(watch.lines(u"No display text for language { lang: xx, region: none }"_qs).size(), 1);
    }

    void anUnknownLanguageEndsTheProcess() {
        const ChildEnd end = runInChild([] { nameOf("xx_YY"); });
        QCOMPARE(end.signal, SIGABRT);
        QVERIFY(end.output.contains(u"Can not find display text for locale: { lang: xx, region: YY }"));
    }
};

QTEST_GUILESS_MAIN(LangUtilsTest)
#include "lang_utils_test.moc"
