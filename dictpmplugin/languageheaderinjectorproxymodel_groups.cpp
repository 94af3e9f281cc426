#include "languageheaderinjectorproxymodel.h"

#include <base/log.h>

#include <algorithm>
#include <ostream>

using Groups = LanguageHeaderInjectorProxyModel::Groups;

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
