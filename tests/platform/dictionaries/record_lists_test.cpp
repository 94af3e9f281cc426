#include <QTest>
#include <dictionaries/api_error.h>
#include <dictionaries/dictionary_info.h>
#include <set>
#include <sstream>

using namespace tessaly;
using dictionary::ApiError;
using dictionary::DictionaryInfo;

namespace {

/// From "1a 2b": records with the server numbers 1 and 2, names "a" and "b", files "1.tsdict" and "2.tsdict".
std::vector<DictionaryInfo> records(const QString& text) {
    std::vector<DictionaryInfo> result;
    for (const QString& token : text.split(u' ', Qt::SkipEmptyParts)) {
        DictionaryInfo info;
        info.serverId = token.left(1).toInt();
        info.name = token.mid(1).toStdString();
        info.file = std::to_string(info.serverId) + ".tsdict";
        result.push_back(info);
    }
    return result;
}

QString text(const std::vector<DictionaryInfo>& list) {
    QStringList tokens;
    for (const DictionaryInfo& info : list)
        tokens << QString::number(info.serverId) + QString::fromStdString(info.name);
    return tokens.join(u' ');
}

bool sameServerId(const DictionaryInfo& a, const DictionaryInfo& b) {
    return a.serverId == b.serverId;
}

DictionaryInfo joinNames(const DictionaryInfo& target, const DictionaryInfo& source) {
    DictionaryInfo info = source;
    info.name = target.name + source.name;
    return info;
}

} // namespace

class RecordListsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void separateAndSubtract() {
        struct {
            QString records, installed, catalogued, uncatalogued, notInstalled;
        } const cases[] = {{{}, {}, {}, {}, {}},
                           {u"3c 1a 2b"_qs, u"712"_qs, u"1a 2b"_qs, u"7"_qs, u"3c"_qs},
                           {u"1a 2b 1c"_qs, u"1"_qs, u"1a"_qs, {}, u"2b"_qs},
                           {{}, u"21"_qs, {}, u"21"_qs, {}}};
        for (const auto& one : cases) {
            vl_api::DictionariesBimap installed;
            for (const QChar c : one.installed)
                installed.insert(
                    {QString(c).toStdString(), QString(c).toStdString() + ".tsdict", "/somewhere"});
            const auto separated = DictionaryInfo::separate(records(one.records), installed);
            QString uncatalogued;
            for (const vl_api::Dictionary& dictionary : separated.vlDictionaries)
                uncatalogued += QString::fromStdString(dictionary.name);
            QCOMPARE(text(separated.dictionaries), one.catalogued);
            QCOMPARE(uncatalogued, one.uncatalogued);
            QCOMPARE(text(DictionaryInfo::subtractLists(records(one.records), installed)), one.notInstalled);
        }
    }

    void blit_data() {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("expected");
        QTest::newRow("first time") << QString() << u"2b 1a"_qs << u"2b 1a"_qs;
        QTest::newRow("nothing new") << u"2b 1a"_qs << QString() << u"2b 1a"_qs;
        QTest::newRow("other order") << u"1a 2b 3c"_qs << u"3z 1x 2y"_qs << u"1ax 2by 3cz"_qs;
        QTest::newRow("gone, kept and new") << u"1a 2b 3c"_qs << u"4w 3z 5v"_qs << u"1a 2b 3cz 4w 5v"_qs;
        QTest::newRow("repeated in target") << u"1a 9g 1b 9h"_qs << u"1x"_qs << u"1ax 9g"_qs;
        QTest::newRow("repeated in source") << u"2b"_qs << u"1x 2y 1z 2w"_qs << u"2by 1x"_qs;
        QTest::newRow("first of the source counts") << u"2b 1a"_qs << u"1x 2y 1z"_qs << u"2by 1ax"_qs;
    }

    void blit() {
        QFETCH(QString, target);
        QFETCH(QString, source);
        QTEST(text(DictionaryInfo::blitLists(records(target), records(source), sameServerId, joinNames)),
              "expected");
    }

    void blitOfLargeListsInOneOrderIsCheap() {
        std::vector<DictionaryInfo> list(5000);
        for (std::size_t i = 0; i < list.size(); ++i)
            list[i].serverId = int(i);
        long long calls = 0;
        const auto counted = [&](const DictionaryInfo& a, const DictionaryInfo& b) {
            ++calls;
            return sameServerId(a, b);
        };
        QCOMPARE(DictionaryInfo::blitLists(list, list, counted, joinNames).size(), list.size());
        // Each pair of the source once, to find repetitions, and one look for each match.
        QCOMPARE(calls, 5000LL * 4999 / 2 + 5000);
    }

    void readableTexts() {
        std::ostringstream line;
        line << records(u"1two\nlines"_qs).at(0).withDatabaseId(42);
        QVERIFY(line.str().find('\n') == std::string::npos &&
                line.str().find("two lines") != std::string::npos);
        QVERIFY(line.str().find("42") != std::string::npos);

        const std::vector<std::pair<ApiError, std::string>> errors = {
            {{ApiError::ParseError{{{{"catalogue", 17, "broken"}}}}}, "catalogue:17: broken"},
            {{ApiError::Wait()}, ""},
            {{ApiError::HttpError{503}}, "503"},
            {{ApiError::RefreshFailed()}, ""},
            {{ApiError::CurlError{28}}, "28"},
            {{ApiError::WrongEmailFormat()}, ""},
            {{ApiError::UndefinedError()}, ""}};
        std::set<std::string> texts;
        for (const auto& [error, part] : errors) {
            QCOMPARE(error.value.which(), int(texts.size()));
            texts.insert(to_string(error));
            QVERIFY(to_string(error).find(part) != std::string::npos);
        }
    }
};

QTEST_GUILESS_MAIN(RecordListsTest)
#include "record_lists_test.moc"
