#include <QTest>
#include <dictionaries/dictionary_info.h>

using namespace tessaly;
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

    void blit() {
        struct {
            QString target, source, expected;
        } const cases[] = {{{}, u"2b 1a"_qs, u"2b 1a"_qs},
                           {u"2b 1a"_qs, {}, u"2b 1a"_qs},
                           {u"1a 2b 3c"_qs, u"3z 1x 2y"_qs, u"1ax 2by 3cz"_qs},
                           {u"1a 2b 3c"_qs, u"4w 3z 5v"_qs, u"1a 2b 3cz 4w 5v"_qs},
                           {u"1a 9g 1b 9h"_qs, u"1x"_qs, u"1ax 9g"_qs},   // repeated in the target
                           {u"2b"_qs, u"1x 2y 1z 2w"_qs, u"2by 1x"_qs},   // repeated in the source
                           {u"2b 1a"_qs, u"1x 2y 1z"_qs, u"2by 1ax"_qs}}; // the first one counts
        for (const auto& one : cases)
            QCOMPARE(text(DictionaryInfo::blitLists(records(one.target), records(one.source), sameServerId,
                                                    joinNames)),
                     one.expected);
    }
};

QTEST_GUILESS_MAIN(RecordListsTest)
#include "record_lists_test.moc"
