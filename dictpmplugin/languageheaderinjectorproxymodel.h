#pragma once

#include <QAbstractProxyModel>
#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>
#include <optional>
#include <utility>
#include <vector>

/// Shows the rows of a list model in groups, one per text of a role of the source (the language), each below
/// a header row. Rows without such a text aren't shown. Whatever happens to the source, the groups are made
/// anew with a model reset; nothing is inserted, removed or moved. The source may be exchanged or destroyed.
/// GUI thread.
///
/// index() doesn't check ranges: a row outside of the groups has an index, whose data is an invalid index.
class LanguageHeaderInjectorProxyModel : public QAbstractProxyModel {
    Q_OBJECT
    /// Name of the source's role whose text is the group's key.
    Q_PROPERTY(QString langPropertyName READ langPropertyName WRITE setLangPropertyName NOTIFY
                   langPropertyNameChanged)
    /// Name of the source's role that the groups are sorted by; without it the order is that of the keys.
    Q_PROPERTY(QString groupSortPropertyName READ groupSortPropertyName WRITE setGroupSortPropertyName NOTIFY
                   groupSortPropertyNameChanged)

public:
    struct Group {
        QModelIndexList indexes; ///< of the source, in its order
        QVariant sortValue;      ///< invalid when there is no role to sort by
    };
    using Groups = QList<std::pair<QString, Group>>;

    /// What one row of the proxy stands for.
    struct Row {
        QModelIndex index; ///< of the source; invalid for a header
        QString language;  ///< the group's key
        bool isHeader = false;
    };

    /// The values of the role that tells headers from items.
    static inline const QString headerType = QStringLiteral("header");
    static inline const QString itemType = QStringLiteral("item");
    static constexpr int injectedRole = 0x1111;
    static const QHash<int, QByteArray>& injectedRoleNames();

    explicit LanguageHeaderInjectorProxyModel(QObject* parent = nullptr);

    [[nodiscard]] QString langPropertyName() const { return m_langPropertyName; }
    [[nodiscard]] QString groupSortPropertyName() const { return m_groupSortPropertyName; }
    void setLangPropertyName(const QString& value);
    void setGroupSortPropertyName(const QString& value);

    /// -1 for a header and for a row outside of the groups.
    Q_INVOKABLE int mapRowToSource(int row) const;
    /// Always -1: it asks with an index of the proxy itself, which stands for no row of the source.
    Q_INVOKABLE int mapRowFromSource(int row) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] QModelIndex mapToSource(const QModelIndex& proxyIndex) const override;
    [[nodiscard]] QModelIndex mapFromSource(const QModelIndex& sourceIndex) const override;

    /// Follows the source from now on. Each call adds to what earlier calls connected, on purpose: it costs
    /// repeated work only, since every handler makes the groups anew.
    void syncSource(QAbstractItemModel* model);
    void updateGroups();
    void updateRoles();

    /// What a proxy row stands for; nothing outside of the groups.
    std::optional<Row> operator[](int row) const;
    /// The proxy row of an index of the source, or -1.
    [[nodiscard]] int rowFromSource(const QModelIndex& source) const;

    /// Reads the model once from the first row to the last. Warns of each row whose sort value isn't that of
    /// its group. A sort role of -1 is none.
    static QMap<QString, Group> produceGroups(const QAbstractItemModel* model, int langRole, int sortRole);
    static Groups groupsToOrdered(const QMap<QString, Group>& groups, bool sort);
    /// The lowest number of a role of this name, or -1.
    static int findRole(const QAbstractItemModel* model, const QByteArray& name);
    /// For debugging: a trace of the groups with the source's rows and, if the model has the role, its text.
    static void dump(const Groups& groups, const QAbstractItemModel* model, const QString& roleName);

Q_SIGNALS:
    void langPropertyNameChanged(QString value);
    void groupSortPropertyNameChanged(QString value);

private:
    /// Where a proxy row is, in the groups.
    struct Place {
        const std::pair<QString, Group>* group;
        const QModelIndex* item; ///< null for the header
        [[nodiscard]] QModelIndex sourceIndex() const { return item ? *item : QModelIndex(); }
    };

    void refresh();
    void handleDataChanged(const QAbstractItemModel* source, const QModelIndex& topLeft,
                           const QModelIndex& bottomRight, const QList<int>& roles);
    /// Null for a row outside of the groups, and without a source: they may be those of a model that is gone.
    [[nodiscard]] const Place* placeOf(int row, const QAbstractItemModel* source) const;
    void placeRows();

    QString m_langPropertyName;
    QString m_groupSortPropertyName;
    Groups m_groups;
    std::vector<Place> m_places;         ///< of each proxy row
    std::vector<int> m_rowsOfSourceRows; ///< the proxy row of each source row, or -1
    int m_langRole = -1;
    int m_groupSortRole = -1;
};
