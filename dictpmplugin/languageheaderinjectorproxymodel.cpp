#include "languageheaderinjectorproxymodel.h"

#include <base/log.h>

#include <QDebug>
#include <algorithm>
#include <ostream>

using Groups = LanguageHeaderInjectorProxyModel::Groups;

const QHash<int, QByteArray>& LanguageHeaderInjectorProxyModel::injectedRoleNames() {
    static const QHash<int, QByteArray> names{{injectedRole, QByteArrayLiteral("injectedType")}};
    return names;
}

LanguageHeaderInjectorProxyModel::LanguageHeaderInjectorProxyModel(QObject* parent)
    : QAbstractProxyModel(parent) {
    using Self = LanguageHeaderInjectorProxyModel;
    connect(this, &Self::sourceModelChanged, this, &Self::refresh);
    connect(this, &Self::langPropertyNameChanged, this, &Self::refresh);
    connect(this, &Self::groupSortPropertyNameChanged, this, &Self::refresh);
    // Once more when QML has set all properties.
    QMetaObject::invokeMethod(this, &Self::refresh, Qt::QueuedConnection);
}

void LanguageHeaderInjectorProxyModel::setLangPropertyName(const QString& value) {
    if (m_langPropertyName == value)
        return;
    m_langPropertyName = value;
    Q_EMIT langPropertyNameChanged(value);
}

void LanguageHeaderInjectorProxyModel::setGroupSortPropertyName(const QString& value) {
    if (m_groupSortPropertyName == value)
        return;
    m_groupSortPropertyName = value;
    Q_EMIT groupSortPropertyNameChanged(value);
}

int LanguageHeaderInjectorProxyModel::mapRowToSource(int row) const {
    return mapToSource(index(row, 0)).row();
}

int LanguageHeaderInjectorProxyModel::mapRowFromSource(int row) const {
    return mapFromSource(index(row, 0)).row();
}

QModelIndex LanguageHeaderInjectorProxyModel::index(int row, int column, const QModelIndex&) const {
    return createIndex(row, column);
}

QModelIndex LanguageHeaderInjectorProxyModel::parent(const QModelIndex&) const {
    return {};
}

int LanguageHeaderInjectorProxyModel::rowCount(const QModelIndex&) const {
    return sourceModel() ? m_headerRows.back() : 0;
}

int LanguageHeaderInjectorProxyModel::columnCount(const QModelIndex& parent) const {
    return sourceModel() ? sourceModel()->columnCount(mapToSource(parent)) : 0;
}

QVariant LanguageHeaderInjectorProxyModel::data(const QModelIndex& index, int role) const {
    const auto place = placeOf(index.row());
    if (!place)
        return QModelIndex();
    const bool isHeader = place->item < 0;
    if (role == injectedRole)
        return isHeader ? headerType : itemType;
    if (role == m_langRole && isHeader)
        return place->group->first;
    return sourceModel()->data(place->sourceIndex(), role);
}

QHash<int, QByteArray> LanguageHeaderInjectorProxyModel::roleNames() const {
    QHash<int, QByteArray> names = QAbstractProxyModel::roleNames();
    names.insert(injectedRoleNames());
    return names;
}

QModelIndex LanguageHeaderInjectorProxyModel::mapToSource(const QModelIndex& proxyIndex) const {
    const auto place = placeOf(proxyIndex.row());
    return place ? place->sourceIndex() : QModelIndex();
}

QModelIndex LanguageHeaderInjectorProxyModel::mapFromSource(const QModelIndex& sourceIndex) const {
    return index(rowFromSource(sourceIndex), 0);
}

void LanguageHeaderInjectorProxyModel::refresh() {
    updateRoles();
    syncSource(sourceModel());
}

void LanguageHeaderInjectorProxyModel::syncSource(QAbstractItemModel* model) {
    if (!model)
        return;
    if (!qobject_cast<QAbstractListModel*>(model))
        qWarning("LanguageHeaderInjectorModel do not have full support of table models as source");

    using Self = LanguageHeaderInjectorProxyModel;
    connect(
        model, &QAbstractItemModel::dataChanged, this,
        [this, model](const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) {
            handleDataChanged(model, topLeft, bottomRight, roles);
        });
    connect(model, &QAbstractItemModel::rowsInserted, this, &Self::updateGroups);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &Self::updateGroups);
    connect(model, &QAbstractItemModel::modelReset, this, &Self::updateGroups);
    connect(model, &QAbstractItemModel::rowsMoved, this, &Self::updateGroups);
    updateGroups();
}

void LanguageHeaderInjectorProxyModel::updateRoles() {
    m_langRole = findRole(this, m_langPropertyName.toUtf8());
    m_groupSortRole = findRole(this, m_groupSortPropertyName.toUtf8());
}

void LanguageHeaderInjectorProxyModel::updateGroups() {
    beginResetModel();
    m_groups =
        groupsToOrdered(produceGroups(sourceModel(), m_langRole, m_groupSortRole), m_groupSortRole >= 0);
    countRows();
    endResetModel();
}

void LanguageHeaderInjectorProxyModel::countRows() {
    m_headerRows.clear();
    m_rowsOfSourceRows.clear();
    int row = 0;
    for (const auto& [language, group] : std::as_const(m_groups)) {
        m_headerRows.push_back(row++);
        for (const QModelIndex& source : group.indexes) {
            const auto sourceRow = std::size_t(std::max(source.row(), 0)); // a source may refuse an index
            if (m_rowsOfSourceRows.size() <= sourceRow)
                m_rowsOfSourceRows.resize(sourceRow + 1, -1);
            m_rowsOfSourceRows[sourceRow] = row++;
        }
    }
    m_headerRows.push_back(row);
}

void LanguageHeaderInjectorProxyModel::handleDataChanged(const QAbstractItemModel* source,
                                                         const QModelIndex& topLeft,
                                                         const QModelIndex& bottomRight,
                                                         const QList<int>& roles) {
    if (roles.contains(findRole(source, m_langPropertyName.toUtf8())) || topLeft != bottomRight) {
        updateGroups();
        return;
    }
    // The source's row number is used as a row of the proxy, on purpose.
    if (const auto place = placeOf(topLeft.row())) {
        const QModelIndex changed = mapFromSource(place->sourceIndex());
        Q_EMIT dataChanged(changed, changed, roles);
    }
}

std::optional<LanguageHeaderInjectorProxyModel::Place>
LanguageHeaderInjectorProxyModel::placeOf(int row) const {
    if (!sourceModel())
        return std::nullopt; // the groups may be those of a model that is gone
    const auto next = std::upper_bound(m_headerRows.begin(), m_headerRows.end(), row);
    if (next == m_headerRows.begin() || next == m_headerRows.end())
        return std::nullopt;
    const auto header = std::prev(next);
    return Place{&m_groups[header - m_headerRows.begin()], row - *header - 1};
}

std::optional<LanguageHeaderInjectorProxyModel::Row>
LanguageHeaderInjectorProxyModel::operator[](int row) const {
    const auto place = placeOf(row);
    if (!place)
        return std::nullopt;
    return Row{place->sourceIndex(), place->group->first, place->item < 0};
}

int LanguageHeaderInjectorProxyModel::rowFromSource(const QModelIndex& source) const {
    const int sourceRow = source.row();
    if (sourceRow < 0 || std::size_t(sourceRow) >= m_rowsOfSourceRows.size())
        return -1;
    const auto place = placeOf(m_rowsOfSourceRows[std::size_t(sourceRow)]);
    return place && place->sourceIndex() == source ? m_rowsOfSourceRows[std::size_t(sourceRow)] : -1;
}

QMap<QString, LanguageHeaderInjectorProxyModel::Group>
LanguageHeaderInjectorProxyModel::produceGroups(const QAbstractItemModel* model, int langRole, int sortRole) {
    QMap<QString, Group> groups;
    QHash<QString, Group*> known; // a map's entries stay where they are
    const int rows = model && langRole >= 0 ? model->rowCount() : 0;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model->index(row, 0);
        const QString language = model->data(index, langRole).toString();
        if (language.isEmpty())
            continue;
        Group*& group = known[language];
        const bool isNew = !group;
        if (isNew)
            group = &groups[language];
        group->indexes.append(index);
        if (sortRole < 0)
            continue;
        QVariant sortValue = model->data(index, sortRole);
        if (isNew)
            group->sortValue = std::move(sortValue);
        else if (group->sortValue != sortValue)
            qWarning("sort data must be the same for all items in group");
    }
    return groups;
}

Groups LanguageHeaderInjectorProxyModel::groupsToOrdered(const QMap<QString, Group>& groups, bool sort) {
    Groups ordered;
    ordered.reserve(groups.size());
    for (auto it = groups.begin(); it != groups.end(); ++it)
        ordered.emplaceBack(it.key(), it.value());
    // Values without an order among them are no strict weak ordering, which only a stable sort survives.
    if (sort)
        std::stable_sort(ordered.begin(), ordered.end(), [](const auto& left, const auto& right) {
            return QVariant::compare(left.second.sortValue, right.second.sortValue) == QPartialOrdering::Less;
        });
    return ordered;
}

int LanguageHeaderInjectorProxyModel::findRole(const QAbstractItemModel* model, const QByteArray& name) {
    const QList<int> roles = model->roleNames().keys(name);
    return roles.isEmpty() ? -1 : *std::min_element(roles.begin(), roles.end());
}

void LanguageHeaderInjectorProxyModel::dump(const Groups& groups, const QAbstractItemModel* model,
                                            const QString& roleName) {
    const int role = model ? findRole(model, roleName.toUtf8()) : -1;
    const auto write = [&](std::ostream& out) -> std::ostream& {
        out << "LanguageHeaderInjectorModel::dumpRefs:\n";
        for (const auto& [language, group] : groups) {
            out << "  GROUP (" << language.toStdString() << "):\n";
            for (const QModelIndex& index : group.indexes) {
                out << "    " << index.row();
                if (role >= 0)
                    out << " -> " << model->data(index, role).toString().toStdString();
                out << '\n';
            }
        }
        return out;
    };
    tessaly::log::cb::trace("languageheaderinjectorproxymodel", __LINE__, __PRETTY_FUNCTION__, write);
}
