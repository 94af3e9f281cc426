#include "benchmarks.h"
#include "compare.h"

#include <dictpmplugin/languageheaderinjectorproxymodel.h>

#include <QAbstractListModel>
#include <QSortFilterProxyModel>
#include <stdexcept>

namespace tessaly::benchmarks {

namespace {

constexpr int languages = 40;
constexpr int rounds = 101;

/// A list like that of the dictionaries: texts in memory, no order.
class Source : public QAbstractListModel {
public:
    enum Role { Key = Qt::UserRole + 1, Name, Title };

    explicit Source(int count) {
        quint32 number = 1;
        for (int i = 0; i < count; ++i) {
            number = number * 1664525 + 1013904223;
            const int language = int((number >> 16) % languages);
            m_rows.append({QStringLiteral("l%1|Language %1").arg(language),
                           QStringLiteral("Language %1").arg(language),
                           QStringLiteral("Dictionary number %1").arg(i)});
        }
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(m_rows.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (index.row() < 0 || index.row() >= m_rows.size())
            return {};
        const Row& row = m_rows[index.row()];
        switch (role) {
        case Key:
            return row.key;
        case Name:
            return row.name;
        case Title:
            return row.title;
        default:
            return {};
        }
    }
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override {
        return {{Key, "key"}, {Name, "name"}, {Title, "title"}};
    }

    void reset() {
        beginResetModel();
        endResetModel();
    }

private:
    struct Row {
        QString key;
        QString name;
        QString title;
    };
    QList<Row> m_rows;
};

class Grouped : public LanguageHeaderInjectorProxyModel {
public:
    explicit Grouped(Source& source) {
        setLangPropertyName(QStringLiteral("key"));
        setGroupSortPropertyName(QStringLiteral("name"));
        setSourceModel(&source); // the last: each refresh with a source adds connections to it
        if (rowCount() != source.rowCount() + languages)
            throw std::runtime_error("the rows are not in their groups");
    }
};

/// Reads these roles of every row; the sum keeps the compiler from leaving it out.
qsizetype read(const QAbstractItemModel& model, std::initializer_list<int> roles) {
    qsizetype sum = 0;
    const int rows = model.rowCount();
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model.index(row, 0);
        for (const int role : roles)
            sum += model.data(index, role).toString().size();
    }
    return sum;
}

volatile qsizetype sink = 0;

Measurement measureGrouping(const char* name, int rows) {
    Source source(rows);
    const Grouped grouped(source);
    const Source bare(rows);
    return compareFastest(
        name, rounds, [&] { source.reset(); },
        [&] {
            sink = read(bare, {Source::Key, Source::Name});
        });
}

} // namespace

Measurement measureGroup10k() {
    return measureGrouping("group 10k", 10'000);
}

Measurement measureGroup100k() {
    return measureGrouping("group 100k", 100'000);
}

Measurement measureGroup10kSortedProxy() {
    Source source(10'000);
    const Grouped grouped(source);
    Source sortedSource(10'000);
    QSortFilterProxyModel sorted;
    sorted.setSourceModel(&sortedSource);
    sorted.setSortRole(Source::Name);
    return compareFastest(
        "group 10k, sorted proxy", rounds, [&] { source.reset(); },
        [&] {
            sortedSource.reset();
            sorted.sort(0);
            sink = sorted.rowCount();
        });
}

Measurement measureProxyData() {
    Source source(10'000);
    const Grouped grouped(source);
    const auto roles = {int(Source::Key), int(Source::Name), int(Source::Title)};
    return compareFastest(
        "proxy data", rounds, [&] { sink = read(grouped, roles); }, [&] { sink = read(source, roles); });
}

} // namespace tessaly::benchmarks
