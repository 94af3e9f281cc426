#include "dictpmplugin/languageheaderinjectorproxymodel.h"

#include "tests/support/log_watch.h"

#include <QIdentityProxyModel>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStringListModel>
#include <QTest>
#include <functional>
#include <map>
#include <memory>
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

private Q_SLOTS:
    void init() { m_watch = std::make_unique<LogWatch>(); }
    void cleanup() {
        const auto watch = std::move(m_watch);
        QCOMPARE(watch->unexpected(), QStringList());
    }

    void groups_data() {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("lang");
        QTest::addColumn<QString>("sort");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << ""
                               << "lang"
                               << ""
                               << "";
        QTest::newRow("one group") << "de1A de1B de1C"
                                   << "lang"
                                   << ""
                                   << "#de A B C";
        QTest::newRow("in code units") << "b1A B1C b1D Other1E"
                                       << "lang"
                                       << ""
                                       << "#B C #Other E #b A D";
        QTest::newRow("by sort value") << "a9A b3B a9C c5D"
                                       << "lang"
                                       << "sort"
                                       << "#b B #c D #a A C";
        QTest::newRow("unknown sort role") << "b1B a9A"
                                           << "lang"
                                           << "order"
                                           << "#a A #b B";
        QTest::newRow("without language") << "1A de1B 1C"
                                          << "lang"
                                          << ""
                                          << "#de B";
        QTest::newRow("unknown language role") << "de1A"
                                               << "tongue"
                                               << "sort"
                                               << "";
        QTest::newRow("no language role") << "de1A"
                                          << ""
                                          << "sort"
                                          << "";
    }
    void groups() {
        QFETCH(QString, rows);
        QFETCH(QString, lang);
        QFETCH(QString, sort);
        QTEST(glance(Fixture(rows, lang, sort).proxy), "expected");
    }

    void rowsAndIndexes() {
        Fixture f(QStringLiteral("de1A fr1B de1C 1D"));
        const Proxy& proxy = f.proxy; // #de A C #fr B
        const QList<int> sources{-1, 0, 2, -1, 1, -1};
        for (int row = 0; row < sources.size(); ++row) {
            QCOMPARE(proxy.mapRowToSource(row), sources[row]);
            QCOMPARE(proxy.mapToSource(proxy.index(row, 7)), f.source.index(sources[row]));
            QCOMPARE(proxy.mapRowFromSource(row), -1);
            if (sources[row] >= 0)
                QCOMPARE(proxy.mapFromSource(f.source.index(sources[row])), proxy.index(row, 0));
        }
        const Source other(QStringLiteral("de1A"));
        for (const QModelIndex& foreign : {other.index(0), f.source.index(3), QModelIndex()})
            QCOMPARE(proxy.mapFromSource(foreign).isValid(), false);
        for (const int row : {5, 99})
            for (const int role : {0x1111, int(Lang)})
                QCOMPARE(proxy.data(proxy.index(row, 3, proxy.index(0, 0)), role), QVariant(QModelIndex()));
        QVERIFY(!proxy[-1] && !proxy[5] && !proxy.parent(proxy.index(1, 0)).isValid());
        QVERIFY(proxy[3]->isHeader && !proxy[4]->isHeader && proxy[4]->language == QStringLiteral("fr"));
        QCOMPARE(proxy.rowCount(proxy.index(0, 0)), 5);
        QCOMPARE(proxy.columnCount(), 1);
        QCOMPARE(proxy.index(0, 0).data(Title).toString(), QStringLiteral("nothing"));
        QCOMPARE(proxy.index(4, 0).data(0x1111).toString(), QStringLiteral("item"));
        QCOMPARE(proxy.roleNames()[4369], QByteArray("injectedType"));
        QCOMPARE(proxy.roleNames().size(), 4);
    }

    void withoutSource() {
        Proxy proxy;
        proxy.setLangPropertyName(QStringLiteral("lang"));
        QCOMPARE(proxy.rowCount() + proxy.columnCount(), 0);
        auto source = std::make_unique<Source>(QStringLiteral("de1A"));
        proxy.setSourceModel(source.get());
        QCOMPARE(proxy.rowCount(), 2);
        source.reset();
        QCOMPARE(proxy.rowCount() + proxy.columnCount(), 0);
        QVERIFY(!proxy.data(proxy.index(1, 0), Title).isValid());
    }

    void refreshesAddUp() {
        Fixture f(QStringLiteral("de1A"));
        const QSignalSpy resets(&f.proxy, &Proxy::modelReset);
        const QSignalSpy names(&f.proxy, &Proxy::langPropertyNameChanged);
        const auto resetsOf = [&](const std::function<void()>& action) {
            const auto before = resets.size();
            action();
            return int(resets.size() - before);
        };
        const auto resetSource = [&] { f.source.setStringList(f.source.stringList()); };
        QCOMPARE(resetsOf(resetSource), 1);
        QCOMPARE(resetsOf([] { QCoreApplication::processEvents(); }), 1); // the one after construction
        QCOMPARE(resetsOf(resetSource), 2);
        QCOMPARE(resetsOf([&] { f.proxy.setLangPropertyName(QStringLiteral("lang")); }), 0);
        QCOMPARE(resetsOf([&] { f.proxy.setLangPropertyName(QStringLiteral("title")); }), 1);
        QCOMPARE(names, QList<QVariantList>{{QStringLiteral("title")}});
        QCOMPARE(resetsOf(resetSource), 3);
        Source other;
        QCOMPARE(resetsOf([&] { f.proxy.setSourceModel(&other); }), 1);
        QCOMPARE(resetsOf(resetSource), 3); // the source of old is still heard
        QCOMPARE(resetsOf([&] { other.insertRows(0, 1); }), 1);
        QCOMPARE(f.proxy.rowCount(), 2);
    }

    void changes_data() {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::addColumn<QList<int>>("roles");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a row number that is an item here") << 2 << 2 << QList<int>{Title} << "2";
        QTest::newRow("one that is a header here") << 3 << 3 << QList<int>{Title} << "-1";
        QTest::newRow("one that isn't here") << 5 << 5 << QList<int>{Title} << "";
        QTest::newRow("no roles") << 1 << 1 << QList<int>{} << "1";
        QTest::newRow("language") << 1 << 1 << QList<int>{Title, Lang} << "reset";
        QTest::newRow("range") << 0 << 1 << QList<int>{Title} << "reset";
        QTest::newRow("range, no roles") << 0 << 1 << QList<int>{} << "reset";
    }
    void changes() {
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(QList<int>, roles);
        Fixture f(QStringLiteral("de1A fr1B de1C 1D 1E 1F")); // #de A C #fr B
        QString told;
        connect(&f.proxy, &Proxy::modelReset, this, [&] { told += QStringLiteral("reset"); });
        connect(&f.proxy, &Proxy::dataChanged, this,
                [&](const QModelIndex& from, const QModelIndex& to, const QList<int>& changed) {
                    QVERIFY(from == to && changed == roles);
                    told += QString::number(from.row());
                });
        f.source.tell(first, last, roles);
        QTEST(told, "expected");
    }

    void warnings() {
        const auto mixed = QStringLiteral("sort data must be the same for all items in group");
        const auto noList =
            QStringLiteral("LanguageHeaderInjectorModel do not have full support of table models as source");
        m_watch->allow(mixed);
        m_watch->allow(noList);
        const Source source(QStringLiteral("de1A fr5B de2C de1D de3E fr5F"));
        const auto groups = Proxy::produceGroups(&source, Lang, Sort);
        QCOMPARE(groups[QStringLiteral("de")].sortValue, QVariant(1));
        QCOMPARE(m_watch->lines(), QStringList({mixed, mixed}));
        m_watch->clear();
        QIdentityProxyModel table;
        Proxy proxy;
        proxy.setSourceModel(&table);
        QCoreApplication::processEvents();
        QCOMPARE(m_watch->lines(), QStringList({noList, noList}));
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

    void dump() {
        const Source source(QStringLiteral("de1A fr1B de1C"));
        Proxy::dump(Proxy::groupsToOrdered(Proxy::produceGroups(&source, Lang, -1), false), &source,
                    QStringLiteral("title"));
        QCOMPARE(m_watch->lines(),
                 QStringList{
                     QStringLiteral("LanguageHeaderInjectorModel::dumpRefs:\n"
                                    "  GROUP (de):\n    0 -> A\n    2 -> C\n  GROUP (fr):\n    1 -> B\n")});
    }

    void staysGroupedUnderAView() {
        Fixture f({}, QStringLiteral("lang"), QStringLiteral("sort"));
        Source& source = f.source;
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import QtQuick\n"
                          "ListView { height: 10000; delegate: Item {"
                          "  required property string injectedType; required property string lang;"
                          "  required property string title; height: 1;"
                          "  property string text: injectedType === 'header' ? '#' + lang : title } }",
                          {});
        const std::unique_ptr<QObject> view(component.create());
        QVERIFY2(view, qPrintable(component.errorString()));
        view->setProperty("model", QVariant::fromValue(&f.proxy));
        const auto glanceAtView = [&] {
            QMetaObject::invokeMethod(view.get(), "forceLayout");
            QStringList texts;
            for (int row = 0; row < view->property("count").toInt(); ++row) {
                QQuickItem* item = nullptr;
                QMetaObject::invokeMethod(view.get(), "itemAtIndex", Q_RETURN_ARG(QQuickItem*, item),
                                          Q_ARG(int, row));
                texts << (item ? item->property("text").toString() : QStringLiteral("nothing"));
            }
            return texts.join(u' ');
        };
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
            const int action = size == 0 ? 0 : below(20);
            if (action == 0)
                source.setStringList({newRow(), newRow(), newRow(), newRow()});
            else if (action < 8)
                source.insertRows(below(size + 1), 1);
            else if (action < 10)
                source.removeRows(first, last - first + 1);
            else if (action < 13)
                source.moveRow({}, first, {}, below(size + 1));
            else if (action < 16) {
                source.setData(source.index(first), newRow());
                source.tell(first, first, {Lang});
            } else if (action < 18 && last > first) {
                source.setData(source.index(last), newRow());
                source.tell(first, last, {Title});
            } else
                source.tell(first, first, {Title});
            QCOMPARE(glance(f.proxy), regroup(source));
            QCOMPARE(glanceAtView(), regroup(source));
        }
    }

private:
    std::unique_ptr<LogWatch> m_watch;
};

QTEST_MAIN(LanguageHeaderInjectorProxyModelTest)
#include "languageheaderinjectorproxymodel_test.moc"
