#include "signal_recorder.h"

#include <dictpmplugin/languageheaderinjectorproxymodel.h>
#include <simulator/fixture/log_watch.h>
#include <tests/support/seeded_random.h>

#include <QAbstractItemModelTester>
#include <QIdentityProxyModel>
#include <QRegularExpression>
#include <QStringListModel>
#include <QTest>
#include <map>
#include <memory>
#include <optional>

using Proxy = LanguageHeaderInjectorProxyModel;

namespace {

enum Role { Lang = 257, Sort, Title, OtherLang };

/// A row is a text like "de|1|A": language, sort value, title; the first may be empty.
class Source : public QStringListModel {
public:
    explicit Source(const QString& text = {})
        : QStringListModel(text.split(u' ', Qt::SkipEmptyParts)) {}

    QHash<int, QByteArray> roleNames() const override {
        return {{Lang, "lang"}, {Sort, "sort"}, {Title, "title"}, {OtherLang, "lang"}};
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid())
            return role == Title ? QVariant(u"nothing"_qs) : QVariant();
        const QString text = QStringListModel::data(index, Qt::DisplayRole).toString();
        return role == Lang    ? text.section(u'|', 0, 0)
               : role == Sort  ? QVariant(text.section(u'|', 1, 1).toInt())
               : role == Title ? text.section(u'|', 2)
                               : QVariant();
    }
    void tell(int first, int last, const QList<int>& roles) {
        Q_EMIT dataChanged(index(first), index(last), roles);
    }
};

struct Fixture {
    explicit Fixture(const QString& text, const QString& lang = u"lang"_qs, const QString& sort = {})
        : source(std::make_unique<Source>(text)) {
        proxy.setLangPropertyName(lang);
        proxy.setGroupSortPropertyName(sort);
        proxy.setSourceModel(source.get());
    }
    std::unique_ptr<Source> source;
    Proxy proxy;
};

/// All rows at a glance: "#de 0A 2C #fr 1B", with the rows of the source.
QString glance(const Proxy& proxy) {
    QStringList texts;
    for (int row = 0; row < proxy.rowCount(); ++row) {
        const QModelIndex index = proxy.index(row, 0);
        const int source = proxy.mapRowToSource(row);
        if (index.data(0x1111) == u"header"_qs && source == -1 && !proxy.mapToSource(index).isValid())
            texts << u'#' + index.data(Lang).toString();
        else if (index.data(0x1111) == u"item"_qs && proxy.mapFromSource(proxy.mapToSource(index)) == index)
            texts << QString::number(source) + index.data(Title).toString();
    }
    return texts.join(u' ');
}

/// The same by hand.
QString expectedRows(const Source& source, bool isSorted) {
    std::map<std::pair<int, QString>, QStringList> groups;
    for (int row = 0; row < source.rowCount(); ++row) {
        const QStringList parts = source.stringList()[row].split(u'|');
        if (!parts[0].isEmpty())
            groups[{isSorted ? parts[1].toInt() : 0, parts[0]}] << QString::number(row) + parts[2];
    }
    QStringList texts;
    for (const auto& [key, rows] : groups)
        texts << u'#' + key.second << rows;
    return texts.join(u' ');
}

} // namespace

class LanguageHeaderInjectorProxyModelTest : public QObject {
    Q_OBJECT

    std::optional<LogWatch> m_watch;

private Q_SLOTS:
    void init() { m_watch.emplace(); }
    void cleanup() { QCOMPARE(m_watch->unexpected(), QStringList()); }

    void unknownRoles() {
        const auto rows = u"b|1|A a|9|B"_qs;
        QCOMPARE(glance(Fixture(rows, u"lang"_qs, u"order"_qs).proxy), u"#a 1B #b 0A"_qs);
        QCOMPARE(glance(Fixture(rows, u"tongue"_qs, u"sort"_qs).proxy), QString());
        QCOMPARE(glance(Fixture(rows, {}, u"sort"_qs).proxy), QString());
    }

    void indexes() {
        Fixture f(u"de|1|A fr|1|B de|1|C |1|D"_qs); // #de A C #fr B
        const Source other(u"de|1|A"_qs);
        for (const QModelIndex& foreign : {other.index(0), f.source->index(3), QModelIndex()})
            QVERIFY(!f.proxy.mapFromSource(foreign).isValid());
        for (const int row : {-1, 0, 1, 5})
            QCOMPARE(f.proxy.mapRowFromSource(row), -1); // on purpose
        QVERIFY(!f.proxy[-1] && !f.proxy[5] && !f.proxy.parent(f.proxy.index(1, 0)).isValid());
        QCOMPARE(f.proxy.data(f.proxy.index(5, 0), Lang), QVariant(QModelIndex()));
        QCOMPARE(f.proxy.index(0, 0).data(Title), QVariant(u"nothing"_qs)); // as the source says of no row
        QCOMPARE(f.proxy.roleNames()[0x1111], QByteArray("injectedType"));
        QCOMPARE(f.proxy.columnCount(), 1);
        f.source.reset();
        QCOMPARE(f.proxy.rowCount() + f.proxy.columnCount(), 0);
        QVERIFY(!f.proxy[1] && !f.proxy.mapToSource(f.proxy.index(1, 0)).isValid());
        QCOMPARE(f.proxy.data(f.proxy.index(1, 0), Title), QVariant(QModelIndex()));
    }

    void refreshesAddUp() {
        Fixture f(u"de|1|A"_qs);
        SignalRecorder recorder(&f.proxy);
        const auto told = [&] {
            return recorder.take().filter(QRegularExpression(u"^model|Name"_qs)).join(u' ');
        };
        const auto reset = u"modelAboutToBeReset() modelReset()"_qs;
        QCoreApplication::processEvents(); // once more after construction
        QCOMPARE(told(), reset);
        f.proxy.setLangPropertyName(u"title"_qs);
        QCOMPARE(told(), reset + u" langPropertyNameChanged(title)"_qs);
        f.proxy.setGroupSortPropertyName(u"sort"_qs);
        QCOMPARE(told(), reset + u" groupSortPropertyNameChanged(sort)"_qs);
        f.proxy.setLangPropertyName(u"title"_qs), f.proxy.setGroupSortPropertyName(u"sort"_qs);
        QCOMPARE(told(), QString());
        Source other;
        f.proxy.setSourceModel(&other);
        QCOMPARE(told(), reset);
        f.source->setStringList({}); // the source of old is still heard, by each refresh there was
        QCOMPARE(told(), (reset + u' ').repeated(4).trimmed());
    }

    void changes_data() {
        QTest::addColumn<int>("first"); // of the source's rows
        QTest::addColumn<int>("last");
        QTest::addColumn<QList<int>>("roles");
        QTest::addColumn<QString>("expected"); // the row's number is taken for one of the proxy's
        QTest::newRow("an item here") << 2 << 2 << QList<int>{Title} << u"2"_qs;
        QTest::newRow("a header here") << 3 << 3 << QList<int>{Title} << u"-1"_qs;
        QTest::newRow("not here") << 5 << 5 << QList<int>{Title} << QString();
        QTest::newRow("no roles") << 1 << 1 << QList<int>{} << u"1"_qs;
        QTest::newRow("language") << 1 << 1 << QList<int>{Title, Lang} << u"reset"_qs;
        QTest::newRow("range") << 0 << 1 << QList<int>{Title} << u"reset"_qs;
    }
    void changes() {
        QFETCH(const int, first);
        QFETCH(const int, last);
        QFETCH(const QList<int>, roles);
        Fixture f(u"de|1|A fr|1|B de|1|C |1|D |1|E |1|F"_qs); // #de A C #fr B
        QString told;
        connect(&f.proxy, &Proxy::modelReset, this, [&] { told += u"reset"_qs; });
        connect(&f.proxy, &Proxy::dataChanged, this,
                [&](const QModelIndex& from, const QModelIndex& to, const QList<int>& changed) {
                    QVERIFY(from == to && changed == roles);
                    told += QString::number(from.row());
                });
        f.source->tell(first, last, roles);
        QTEST(told, "expected");
    }

    void warnings() {
        const QStringList texts{
            u"sort data must be the same for all items in group"_qs,
            u"LanguageHeaderInjectorModel do not have full support of table models as source"_qs};
        for (const QString& text : texts)
            m_watch->allow(text);
        const Source source(u"de|1|A fr|5|B de|2|C de|1|D de|3|E fr|5|F"_qs);
        QCOMPARE(Proxy::produceGroups(&source, Lang, Sort)[u"de"_qs].sortValue, QVariant(1));
        QIdentityProxyModel table;
        Proxy proxy;
        proxy.setSourceModel(&table);
        QCOMPARE(m_watch->lines(), texts.first(1) + texts);
    }

    /// Whatever happens to the source, a view that reads all at each reset sees the rows as they are.
    void staysGrouped() {
        Fixture f({});
        Source& source = *f.source;
        const QAbstractItemModelTester tester(&source, QAbstractItemModelTester::FailureReportingMode::Fatal);
        QString seen;
        connect(&f.proxy, &Proxy::modelReset, this, [&] { seen = glance(f.proxy); });
        std::mt19937 random = seededRandom();
        const auto below = [&](int bound) { return int(random() % unsigned(bound)); };
        int number = 0;
        const auto newRow = [&] {
            static const char* const languages[] = {"a|30", "b|4", "c|200", "Other|9", "|5"};
            return QLatin1String(languages[below(5)]) + u"|T%1"_qs.arg(++number);
        };
        bool isSorted = false;
        for (int step = 0; step < 4000; ++step) {
            const int size = source.rowCount();
            const int first = below(std::max(size, 1));
            const int last = std::min(first + below(4), size - 1);
            const int action = size == 0 ? 0 : below(100);
            if (action == 0) {
                source.setStringList({newRow(), newRow(), newRow(), newRow()});
            } else if (action == 1 && step < 1000) { // each refresh adds to the work of all that follows
                isSorted = !isSorted;
                f.proxy.setGroupSortPropertyName(isSorted ? u"sort"_qs : QString());
            } else if (action < 25) {
                source.insertRows(first, 1 + below(3)); // without a language at first
            } else if (action < 40) {
                source.removeRows(first, last - first + 1);
            } else if (action < 60) {
                source.moveRow({}, first, {}, below(size + 1));
            } else {
                source.setData(source.index(last), newRow());
                source.tell(first, last, {Lang});
            }
            QCOMPARE(seen, expectedRows(source, isSorted));
        }
    }
};

QTEST_GUILESS_MAIN(LanguageHeaderInjectorProxyModelTest)
#include "languageheaderinjectorproxymodel_test.moc"
