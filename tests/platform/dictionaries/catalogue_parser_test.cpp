#include <QTest>
#include <catalogue_parser.h>
#include <simulator/fixture/log_watch.h>
#include <sstream>

using namespace tessaly::dictionary;

namespace {

/// "1 A a.tsdict cs>zh_TW", with "-" for an absent language.
QString summary(const DictionaryInfo& info) {
    const auto language = [](const auto& locale) { return locale ? locale->stringify('_') : "-"; };
    std::ostringstream text;
    text << info.serverId << ' ' << info.name << ' ' << info.file << ' ' << language(info.languageFrom) << '>'
         << language(info.languageTo);
    return QString::fromStdString(text.str());
}

// Bodies here have single quotes for double ones, to be readable.
auto parse(QByteArray body) {
    return parseCatalogue(body.replace('\'', '"').toStdString());
}

const QByteArray good = "{'id': 1, 'name': 'A', 'file': 'a.tsdict'}";
const QByteArray longName = "'file': '" + QByteArray(249, 'x') + ".tsdict'";

} // namespace

class CatalogueParserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void kept() {
        struct {
            QByteArray members, expected;
            QString warned; ///< begin of the only warning's text
        } const records[] = {
            {"'version': null, 'language_from': null, 'set': null", "1 A a.tsdict ->-", {}},
            {"'language_from': {'code': 'cs', 'region': null}", "1 A a.tsdict cs>-", {}},
            {"'language_to': {'code': 'zh', 'region': 'TW'}", "1 A a.tsdict ->zh_TW", {}},
            {"'language_from': {'code': ''}", "1 A a.tsdict ->-", {}},
            {"'language_from': {'code': 'c/'}", "1 A a.tsdict ->-", u"catalogue: record 0: language_from"_qs},
            {"'language_to': {'code': 'zh', 'region': '-'}", "1 A a.tsdict ->-",
             u"catalogue: record 0: language_to"_qs},
            {"'name': '" + QByteArray(301, 'x') + "'", "1 " + QByteArray(299, 'x') + "… a.tsdict ->-",
             u"catalogue: record 0: name is too long, it has 301 characters"_qs},
            {"'id': 2147483647, 'file': 'Řečtina [1].tsdict'", "2147483647 A Řečtina [1].tsdict ->-", {}}};
        for (const auto& record : records) {
            // Of a repeated member the last counts.
            const auto parsed = parse('[' + good.chopped(1) + ", " + record.members + "}]");
            QCOMPARE(parsed.getRight().size(), std::size_t(1));
            QCOMPARE(summary(parsed.getRight()[0]), QString::fromUtf8(record.expected));
            const QStringList warnings = m_log.takeUnexpected();
            QCOMPARE(warnings.size(), record.warned.isEmpty() ? 0 : 1);
            QVERIFY(record.warned.isEmpty() || warnings[0].startsWith(record.warned));
        }
    }

    void dropped() {
        QByteArrayList records =
            QByteArray("7|null|[]|{'name': 'A', 'file': 'b.tsdict'}|{'id': 2, 'name': 'A'}|"
                       "{'id': 2, 'file': 'b.tsdict'}")
                .split('|');
        records << good;
        const QByteArray members =
            "'id': 0|'id': -3|'id': 2147483648|'id': 1e300|'id': 1.5|'id': '2'|'id': null|'id': true|"
            "'name': ''|'name': 4|'file': '../b.tsdict'|'file': '/b.tsdict'|'file': 'b.db'|'file': '..'|"
            "'file': '.tsdict'|'file': 'b\\u0000.tsdict'|'file': 'b\\n.tsdict'|'file': 12|'file': "
            "'b.tsdict/'|"
            "'version': '1'|'version': 4294967296|'description': []|'language_from': 'cs'|'size': -1|"
            "'language_to': {'code': 1}|'language_from': {'code': 'c/'}, 'category': 1|" +
            longName;
        for (const QByteArray& member : members.split('|'))
            records << "{'id': 2, 'name': 'A', 'file': 'b.tsdict', " + member + '}';
        for (const QByteArray& record : qAsConst(records)) {
            const auto parsed =
                parse('[' + good + ',' + record + ",{'id': 3, 'name': 'C', 'file': 'c.tsdict'}]").getRight();
            QVERIFY2(parsed.size() == 2 && summary(parsed[1]) == u"3 C c.tsdict ->-", record);
            const QStringList warnings = m_log.takeUnexpected();
            QVERIFY2(warnings.size() == 1 && warnings[0].startsWith(u"catalogue: record 1: left out"),
                     record);
        }
    }

    /// Records by number and name, the server's ones merged into what is stored.
    void merges() {
        const auto records = [](const QString& text) {
            std::vector<DictionaryInfo> result;
            for (const QString& token : text.split(u' ', Qt::SkipEmptyParts)) {
                result.emplace_back();
                result.back().serverId = token.left(1).toInt();
                result.back().name = token.mid(1).toStdString();
            }
            return result;
        };
        const auto sameId = [](const auto& a, const auto& b) { return a.serverId == b.serverId; };
        const auto joinNames = [](DictionaryInfo target, const DictionaryInfo& source) {
            target.name += source.name;
            return target;
        };
        const std::tuple<QString, QString, QString> cases[] = {
            {u"1a 2b 3c"_qs, u"4w 3z 5v 1x"_qs, u"1ax 2b 3cz 4w 5v"_qs},
            {u"1a 9g 1b 9h"_qs, u"1x"_qs, u"1ax 9g"_qs},  // repeated in what is stored
            {u"2b"_qs, u"1x 2y 1z 2w"_qs, u"2by 1x"_qs}}; // repeated by the server: the first counts
        for (const auto& [target, source, expected] : cases) {
            QStringList merged;
            for (const auto& info :
                 DictionaryInfo::blitLists(records(target), records(source), sameId, joinNames))
                merged << QString::number(info.serverId) + QString::fromStdString(info.name);
            QCOMPARE(merged.join(u' '), expected);
        }
    }

    void everyMember() {
        const auto parsed =
            parse("[{'id': 1, 'name': 'N', 'file': 'f.tsdict', 'version': 3, 'thumbnail': 'https://h/c',"
                  "'description': 'D', 'category': 'C', 'provider': 'P', 'publish_date': '2020-01-02',"
                  "'set': 'S', 'size': 5000000000, 'unknown': {}},"
                  "{'id': 2, 'name': 'N', 'file': 'g.tsdict', 'thumbnail': 'file:///etc/passwd'}]");
        const DictionaryInfo info = parsed.getRight().at(0);
        QCOMPARE(info.version, 3);
        QCOMPARE(info.thumbnail + info.description + info.category + info.provider + info.publishDate +
                     info.dictSet,
                 std::string("https://h/cDCP2020-01-02S"));
        QCOMPARE(parsed.getRight().at(1).thumbnail, std::string());
    }

    void tooMany() {
        QByteArray body = "[1,1,1,1,1,1,1,1,1,1,1,1";
        for (int id = 1; id <= 20'001; ++id)
            body += ",{'id': " + QByteArray::number(id) + ", 'name': 'A', 'file': 'a.tsdict'}";
        QCOMPARE(parse(body + ']').getRight().size(), 20'000U);
        QCOMPARE(m_log.lines(u"left out, not a record"_qs).size(), 10);
        const QStringList warnings = m_log.takeUnexpected().mid(10);
        QCOMPARE(warnings, QStringList({u"catalogue: 1 entries are left out, after 20000 records"_qs,
                                        u"catalogue: 2 more like these"_qs}));
    }

    void tooMuchText() {
        QByteArray body = "[{}";
        for (int id = 1; id <= 2100; ++id)
            body += ",{'id': " + QByteArray::number(id) +
                    ", 'name': 'A', 'file': 'a.tsdict', 'description': '" + QByteArray(4000, 'x') + "'}";
        QCOMPARE(parse(body + ']').getRight().size(), 2093U); // 8 MiB
        QCOMPARE(m_log.takeUnexpected().size(), 2);
    }

    void whatFollowsIsNotParsed() {
        for (const auto& [count, found] : {std::pair{39'999, 1U}, {40'000, 0U}}) {
            const QByteArray entries = QByteArray(R"(['a,\']{', {'b': 1}],)").repeated(count);
            QCOMPARE(parse('[' + entries + good + ']').getRight().size(), found);
            const QString warning = u"catalogue: only the first 40000 entries are read"_qs;
            QCOMPARE(m_log.takeUnexpected().contains(warning), found == 0);
        }
    }

    void otherBodies() {
        const std::pair<QByteArray, int> bodies[] = {{"", 0},
                                                     {"{}", 0},
                                                     {'[' + good.chopped(1), int(good.size())},
                                                     {"<html></html>", 1},
                                                     {QByteArray(100'000, '['), 1025}};
        for (const auto& [body, position] : bodies) {
            const auto parsed = parse(body);
            QVERIFY(parsed.isLeft() && parsed.getLeft().is<ApiError::ParseError>());
            QCOMPARE(boost::get<ApiError::ParseError>(parsed.getLeft().value).error.err.at(0).position,
                     position);
        }
    }

private:
    LogWatch m_log;
};

QTEST_GUILESS_MAIN(CatalogueParserTest)
#include "catalogue_parser_test.moc"
