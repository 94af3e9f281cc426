#include "languageheaderinjectorproxymodel.h"

#include <base/log.h>

#include <QDebug>
#include <algorithm>
#include <ostream>
#include <string_view>
#include <unordered_map>

using Groups = LanguageHeaderInjectorProxyModel::Groups;

namespace {

/// The text that a value holds, uncopied; null if it holds something else.
const QString* heldText(const QVariant& value) {
    return value.typeId() == QMetaType::QString ? static_cast<const QString*>(value.constData()) : nullptr;
}

std::u16string_view viewOf(const QString& text) {
    return {QStringView(text).utf16(), std::size_t(text.size())};
}

bool areEqual(const QVariant& a, const QVariant& b) {
    const QString* const textOfA = heldText(a);
    const QString* const textOfB = heldText(b);
    return textOfA && textOfB ? *textOfA == *textOfB : a == b; // the same, at a third of the time
}

} // namespace

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
    return sourceModel() ? int(m_places.size()) : 0;
}

int LanguageHeaderInjectorProxyModel::columnCount(const QModelIndex& parent) const {
    return sourceModel() ? sourceModel()->columnCount(mapToSource(parent)) : 0;
}

QVariant LanguageHeaderInjectorProxyModel::data(const QModelIndex& index, int role) const {
    const QAbstractItemModel* const source = sourceModel();
    const Place* const place = placeOf(index.row(), source);
    if (!place)
        return QModelIndex();
    const bool isHeader = !place->item;
    if (role == injectedRole)
        return isHeader ? headerType : itemType;
    if (role == m_langRole && isHeader)
        return place->group->first;
    return source->data(place->sourceIndex(), role);
}

QHash<int, QByteArray> LanguageHeaderInjectorProxyModel::roleNames() const {
    QHash<int, QByteArray> names = QAbstractProxyModel::roleNames();
    names.insert(injectedRoleNames());
    return names;
}

QModelIndex LanguageHeaderInjectorProxyModel::mapToSource(const QModelIndex& proxyIndex) const {
    const Place* const place = placeOf(proxyIndex.row(), sourceModel());
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
    placeRows();
    endResetModel();
}

void LanguageHeaderInjectorProxyModel::placeRows() {
    m_places.clear();
    m_rowsOfSourceRows.assign(std::size_t(sourceModel() ? sourceModel()->rowCount() : 0), -1);
    m_places.reserve(m_rowsOfSourceRows.size() + std::size_t(m_groups.size()));
    for (const auto& group : std::as_const(m_groups)) {
        m_places.push_back({&group, nullptr});
        for (const QModelIndex& source : group.second.indexes) {
            const auto sourceRow = std::size_t(source.row());
            if (sourceRow < m_rowsOfSourceRows.size()) // a source may refuse an index
                m_rowsOfSourceRows[sourceRow] = int(m_places.size());
            m_places.push_back({&group, &source});
        }
    }
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
    if (const Place* const place = placeOf(topLeft.row(), sourceModel())) {
        const QModelIndex changed = mapFromSource(place->sourceIndex());
        Q_EMIT dataChanged(changed, changed, roles);
    }
}

const LanguageHeaderInjectorProxyModel::Place*
LanguageHeaderInjectorProxyModel::placeOf(int row, const QAbstractItemModel* source) const {
    const bool isThere = source && row >= 0 && std::size_t(row) < m_places.size();
    return isThere ? &m_places[std::size_t(row)] : nullptr;
}

std::optional<LanguageHeaderInjectorProxyModel::Row>
LanguageHeaderInjectorProxyModel::operator[](int row) const {
    const Place* const place = placeOf(row, sourceModel());
    if (!place)
        return std::nullopt;
    return Row{place->sourceIndex(), place->group->first, !place->item};
}

int LanguageHeaderInjectorProxyModel::rowFromSource(const QModelIndex& source) const {
    const int sourceRow = source.row();
    if (sourceRow < 0 || std::size_t(sourceRow) >= m_rowsOfSourceRows.size())
        return -1;
    const Place* const place = placeOf(m_rowsOfSourceRows[std::size_t(sourceRow)], sourceModel());
    return place && place->sourceIndex() == source ? m_rowsOfSourceRows[std::size_t(sourceRow)] : -1;
}

QMap<QString, LanguageHeaderInjectorProxyModel::Group>
LanguageHeaderInjectorProxyModel::produceGroups(const QAbstractItemModel* model, int langRole, int sortRole) {
    QMap<QString, Group> groups;
    std::unordered_map<std::u16string_view, Group*> known; // a map's entries stay where they are
    const int rows = model && langRole >= 0 ? model->rowCount() : 0;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model->index(row, 0);
        const QVariant value = model->data(index, langRole);
        const QString* const held = heldText(value);
        const QString converted = held ? QString() : value.toString();
        const QString& language = held ? *held : converted;
        if (language.isEmpty())
            continue;
        auto found = known.find(viewOf(language));
        const bool isNew = found == known.end();
        if (isNew) {
            const auto added = groups.insert(language, {});
            found = known.emplace(viewOf(added.key()), &added.value()).first;
        }
        Group& group = *found->second;
        group.indexes.append(index);
        if (sortRole < 0)
            continue;
        QVariant sortValue = model->data(index, sortRole);
        if (isNew)
            group.sortValue = std::move(sortValue);
        else if (!areEqual(group.sortValue, sortValue))
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
