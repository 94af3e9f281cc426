#include <dictpmplugin/LangUtils.h>
#include <simulator/fixture/log_watch.h>
#include <tests/support/child_process.h>
#include <utilities/locale.h>

#include <QLocale>
#include <QTest>
#include <csignal>
#include <map>

using namespace tessaly::dictionary::langutils;

class LangUtilsTest : public QObject {
    Q_OBJECT

    static std::string nameOf(const char* code) {
        return localeDisplayText(tessaly::utilities::locale_parser::tagged_parse(code, '_').unwrap());
    }

private Q_SLOTS:
    void regionsMatterOnlyAsStored() {
        QCOMPARE(nameOf("zh_tw"), "Chinese (Traditional)");
        QCOMPARE(nameOf("zh_cn"), "Chinese (Simplified)");
        QCOMPARE(nameOf("zh_sg"), "Chinese (Simplified, Singapore)");
        for (const char* const code : {"zh_TW", "zh_hk", "zh"})
            QCOMPARE(nameOf(code), "Chinese");
        QCOMPARE(nameOf("pt_BR"), "Portuguese");
    }

    /// Qt knows most of the names, too.
    void namesLanguages() {
        const std::map<QString, QString> others = {{u"az"_qs, u"Azerbaijan"_qs},
                                                   {u"bn"_qs, u"Bengali"_qs},
                                                   {u"no"_qs, u"Norwegian"_qs},
                                                   {u"tl"_qs, u"Tagalog"_qs}};
        LogWatch watch; // each of the others is warned of, once
        tessaly::log::setLogFile("/dev/null");
        int named = 0;
        for (int i = 0; i < 2 * 26 * 26; ++i) {
            const Locale locale{{char('a' + i / 26 % 26), char('a' + i % 26)}, boost::none};
            const QString name = QString::fromStdString(displayTextOr(locale, "Other"));
            if (name == u"Other")
                continue;
            ++named;
            const QString code = QString::fromStdString(locale.language);
            const auto other = others.find(code);
            QCOMPARE(name, other != others.end() ? other->second
                                                 : QLocale::languageToString(QLocale::codeToLanguage(code)));
        }
        tessaly::log::setLogFile("");
        QCOMPARE(displayTextOr(boost::none, "Other") + displayTextOr(Locale(), "Other"), "OtherOther");
        QCOMPARE(named, 2 * 48);
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
