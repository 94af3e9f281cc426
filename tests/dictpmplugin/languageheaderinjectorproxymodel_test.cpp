#include "dictpmplugin/languageheaderinjectorproxymodel.h"

#include "tests/support/log_watch.h"

#include <QIdentityProxyModel>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStringListModel>
#include <QTest>
#include <map>
#include <memory>
#include <optional>
#include <random>

using Proxy = LanguageHeaderInjectorProxyModel;

namespace {

enum Role { Lang = 257, Sort, Title };

/// A row is a text like "de1A": language, sort value, title; the first may be empty.
class Source : public QStringListModel {
public:
    explicit Source(const QString& text = {})
        : QStringListModel(text.split(u' ', Qt::SkipEmptyParts)) {}

    QHash<int, QByteArray> roleNames() const override {
        return {{Lang, "lang"}, {Sort, "sort"}, {Title, "title"}};
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid())
            return QStringLiteral("nothing");
        const QString text = QStringListModel::data(index, Qt::DisplayRole).toString();
        const QString row = text.isEmpty() ? QStringLiteral("a3new") : text;
        const auto digit = row.indexOf(QRegularExpression(QStringLiteral("\\d")));
        return role == Lang   ? row.left(digit)
               : role == Sort ? QVariant(row.mid(digit, 1).toInt())
                              : row.mid(digit + 1);
    }
    void tell(int first, int last, const QList<int>& roles) {
        Q_EMIT dataChanged(index(first), index(last), roles);
    }
};

struct Fixture {
    explicit Fixture(const QString& text, const QString& lang = QStringLiteral("lang"),
                     const QString& sort = {})
        : source(text) {
        proxy.setLangPropertyName(lang);
        proxy.setGroupSortPropertyName(sort);
        proxy.setSourceModel(&source);
    }
    Source source;
    Proxy proxy;
};

/// All rows at a glance: "#de A B #fr C".
QString glance(const Proxy& proxy) {
    QStringList texts;
    for (int row = 0; row < proxy.rowCount(); ++row) {
        const QModelIndex index = proxy.index(row, 0);
        const bool isHeader = index.data(0x1111) == QStringLiteral("header");
        texts << (isHeader ? u'#' + index.data(Lang).toString() : index.data(Title).toString());
    }
    return texts.join(u' ');
}

QString regroup(const Source& source) {
    std::map<std::pair<int, QString>, QStringList> groups;
    for (int row = 0; row < source.rowCount(); ++row) {
        const QModelIndex index = source.index(row);
        groups[{index.data(Sort).toInt(), index.data(Lang).toString()}] << index.data(Title).toString();
    }
    QStringList texts;
    for (const auto& [key, titles] : groups)
        if (!key.second.isEmpty())
            texts << u'#' + key.second << titles;
    return texts.join(u' ');
}

} // namespace

class LanguageHeaderInjectorProxyModelTest : public QObject {
    Q_OBJECT

    std::optional<LogWatch> m_watch;

private Q_SLOTS:
    void init() { m_watch.emplace(); }
    void cleanup() { QCOMPARE(m_watch->unexpected(), QStringList()); }

    void groups_data() {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("roles"); // for the language, and the sort value
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* rows, const char* roles, const char* expected) {
            QTest::newRow(name) << QString::fromLatin1(rows) << QString::fromLatin1(roles)
                                << QString::fromLatin1(expected);
        };
        row("in code units", "b1A B1C b1D Other1E", "lang", "#B C #Other E #b A D");
        row("by sort value", "a9A b3B a9C c5D", "lang sort", "#b B #c D #a A C");
        row("unknown sort role", "b1B a9A", "lang order", "#a A #b B");
        row("without language", "1A de1B 1C", "lang", "#de B");
        row("unknown language role", "de1A", "tongue sort", "");
        row("no language role", "de1A", " sort", "");
    }
    void groups() {
        QFETCH(const QString, rows);
        QFETCH(const QString, roles);
        QTEST(glance(Fixture(rows, roles.section(u' ', 0, 0), roles.section(u' ', 1)).proxy), "expected");
    }

    void rowsAndIndexes() {
        Fixture f(QStringLiteral("de1A fr1B de1C 1D"));
        const Proxy& proxy = f.proxy; // #de A C #fr B
        const QList<int> sources{-1, 0, 2, -1, 1, -1};
        for (int row = 0; row < sources.size(); ++row) {
            QCOMPARE(proxy.mapRowToSource(row), sources[row]);
            QCOMPARE(proxy.mapToSource(proxy.index(row, 0)), f.source.index(sources[row]));
            if (sources[row] >= 0)
                QCOMPARE(proxy.mapFromSource(f.source.index(sources[row])), proxy.index(row, 0));
        }
        const Source other(QStringLiteral("de1A"));
        for (const QModelIndex& foreign : {other.index(0), f.source.index(3), QModelIndex()})
            QVERIFY(!proxy.mapFromSource(foreign).isValid());
        QVERIFY(!proxy[-1] && !proxy[5] && !proxy.parent(proxy.index(1, 0)).isValid());
        QCOMPARE(proxy.data(proxy.index(5, 0), Lang), QVariant(QModelIndex()));
        QCOMPARE(proxy.index(0, 0).data(Title).toString(), QStringLiteral("nothing"));
        QCOMPARE(proxy.roleNames()[0x1111], QByteArray("injectedType"));
    }

    void withoutSource() {
        Proxy proxy;
        proxy.setLangPropertyName(QStringLiteral("lang"));
        auto source = std::make_unique<Source>(QStringLiteral("de1A"));
        proxy.setSourceModel(source.get());
        QCOMPARE(proxy.rowCount(), 2);
        source.reset();
        QCOMPARE(proxy.rowCount() + proxy.columnCount(), 0);
        QVERIFY(!proxy[1] && !proxy.mapToSource(proxy.index(1, 0)).isValid());
        QCOMPARE(proxy.data(proxy.index(1, 0), Title), QVariant(QModelIndex()));
    }

    void refreshesAddUp() {
        Fixture f(QStringLiteral("de1A"));
        const QSignalSpy resets(&f.proxy, &Proxy::modelReset);
        QCoreApplication::processEvents(); // the one after construction
        QCOMPARE(resets.size(), 1);
        f.proxy.setLangPropertyName(QStringLiteral("lang"));
        QCOMPARE(resets.size(), 1);
        f.proxy.setLangPropertyName(QStringLiteral("title"));
        QCOMPARE(resets.size(), 2);
        Source other;
        f.proxy.setSourceModel(&other);
        QCOMPARE(resets.size(), 3);
        f.source.setStringList({}); // the source of old is still heard
        QCOMPARE(resets.size(), 6);
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
        Fixture f(QStringLiteral("de1A fr1B de1C 1D 1E 1F")); // #de A C #fr B
        QString told;
        connect(&f.proxy, &Proxy::modelReset, this, [&] { told += u"reset"_qs; });
        connect(&f.proxy, &Proxy::dataChanged, this,
                [&](const QModelIndex& from, const QModelIndex& to, const QList<int>& changed) {
                    QVERIFY(from == to && changed == roles);
                    told += QString::number(from.row());
                });
        f.source.tell(first, last, roles);
        QTEST(told, "expected");
    }

    void warnings() {
        const auto mixed = u"sort data must be the same for all items in group"_qs;
        const auto noList =
            u"LanguageHeaderInjectorModel do not have full support of table models as source"_qs;
        m_watch->allow(mixed);
        m_watch->allow(noList);
        const Source source(QStringLiteral("de1A fr5B de2C de1D de3E fr5F"));
        const auto groups = Proxy::produceGroups(&source, Lang, Sort);
        QCOMPARE(groups[QStringLiteral("de")].sortValue, QVariant(1));
        QIdentityProxyModel table;
        Proxy proxy;
        proxy.setSourceModel(&table);
        QCOMPARE(m_watch->lines(), QStringList({mixed, mixed, noList}));
    }

    /// Values among which there is no order must not lead the sort astray.
    void sortsWhatHasNoOrder() {
        QMap<QString, Proxy::Group> groups;
        for (int i = 0; i < 500; ++i)
            groups[QString::number(i)].sortValue = i % 3 == 0   ? QVariant(QStringLiteral("text"))
                                                   : i % 3 == 1 ? QVariant(qQNaN())
                                                                : QVariant(double(-i));
        QSet<QString> keys;
        for (const auto& [key, group] : Proxy::groupsToOrdered(groups, true))
            keys.insert(key);
        QCOMPARE(keys.size(), 500);
    }

    void staysGrouped() {
        Fixture f({}, QStringLiteral("lang"), QStringLiteral("sort"));
        Source& source = f.source;
        QString seen; // by a view, which reads all at a reset
        connect(&f.proxy, &Proxy::modelReset, this, [&] { seen = glance(f.proxy); });
        std::mt19937 random(1);
        const auto below = [&](int bound) { return int(random() % unsigned(bound)); };
        int number = 0;
        const auto newRow = [&] {
            static const char* const languages[] = {"a3", "b1", "c2", "Other4", "0"};
            return QLatin1String(languages[below(5)]) + QStringLiteral("T%1").arg(++number);
        };
        for (int step = 0; step < 1000; ++step) {
            const int size = source.rowCount();
            const int first = below(std::max(size, 1));
            const int last = std::min(first + below(4), size - 1);
            const int action = size == 0 ? 0 : below(16);
            if (action == 0)
                source.setStringList({newRow(), newRow(), newRow(), newRow()});
            else if (action < 8)
                source.insertRows(below(size + 1), 1);
            else if (action < 10)
                source.removeRows(first, last - first + 1);
            else if (action < 13)
                source.moveRow({}, first, {}, below(size + 1));
            else {
                source.setData(source.index(last), newRow());
                source.tell(first, last, {Lang});
            }
            QCOMPARE(seen, regroup(source));
        }
    }
};

QTEST_GUILESS_MAIN(LanguageHeaderInjectorProxyModelTest)
#include "languageheaderinjectorproxymodel_test.moc"
