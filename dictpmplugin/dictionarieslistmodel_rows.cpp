// What the rows hold, for views by role and for QML by index.

#include "LangUtils.h"
#include "dictionarieslistmodel.h"

#include <algorithm>

namespace tessaly::dictionary {

namespace {

enum Role {
    DisplayTitleRole = Qt::DisplayRole,
    TitleRole = Qt::UserRole + 1, // Qt::UserRole itself is left out
    LanguageFromRole,
    LanguageIsoFromRole,
    LanguageFromPairRole,
    LanguageToRole,
    LanguageIsoToRole,
    ProviderRole,
    DescriptionRole,
    HasDescriptionRole,
    VersionRole,
    CoverUrlRole,
    SelectedToDownloadRole,
    InstalledRole,
    SetRole,
    CategoryRole
};

} // namespace

int DictionariesListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : getCount();
}

int DictionariesListModel::getCount() const {
    return int(m_dictionaries.size());
}

QVariant DictionariesListModel::data(const QModelIndex& index, int role) const {
    const int row = index.row();
    if (!itemAt(row))
        return {};
    switch (role) {
    case DisplayTitleRole:
        return getDisplayTitle(row);
    case TitleRole:
        return getTitle(row);
    case LanguageFromRole:
        return getLanguageFrom(row, false);
    case LanguageIsoFromRole:
        return getLanguageFrom(row, true);
    case LanguageFromPairRole:
        return QString(getLanguageFrom(row, true) + u'|' + getLanguageFrom(row, false));
    case LanguageToRole:
        return getLanguageTo(row, false);
    case LanguageIsoToRole:
        return getLanguageTo(row, true);
    case ProviderRole:
        return getProvider(row);
    case DescriptionRole:
    case HasDescriptionRole: // the text itself, on purpose: QML asks only whether it is true
        return getDescription(row);
    case VersionRole:
        return getVersion(row);
    case CoverUrlRole:
        return getCoverUrl(row);
    case SelectedToDownloadRole:
        return isSelected(row);
    case InstalledRole:
        return isInstalled(row);
    case SetRole:
        return getSet(row);
    case CategoryRole:
        return getCategory(row);
    default:
        return {};
    }
}

QHash<int, QByteArray> DictionariesListModel::roleNames() const {
    return {{DisplayTitleRole, "displayTitle"},
            {TitleRole, "title"},
            {LanguageFromRole, "languageFrom"},
            {LanguageIsoFromRole, "languageIsoFrom"},
            {LanguageFromPairRole, "languageFromPair"},
            {LanguageToRole, "languageTo"},
            {LanguageIsoToRole, "languageIsoTo"},
            {ProviderRole, "provider"},
            {DescriptionRole, "description"},
            {HasDescriptionRole, "hasDescription"},
            {VersionRole, "version"},
            {CoverUrlRole, "coverUrl"},
            {SelectedToDownloadRole, "selectedToDownload"},
            {InstalledRole, "installed"},
            {SetRole, "set"},
            {CategoryRole, "category"}};
}

const DictionariesListModel::Item* DictionariesListModel::itemAt(int index) const {
    return index >= 0 && index < getCount() ? &m_dictionaries[std::size_t(index)] : nullptr;
}

QString DictionariesListModel::text(int index, std::string DictionaryInfo::*field) const {
    const Item* const item = itemAt(index);
    return item ? QString::fromStdString(item->info.*field) : QString();
}

QString DictionariesListModel::language(int index, Locale DictionaryInfo::*field, bool iso) const {
    const Item* const item = itemAt(index);
    if (!item)
        return {};
    const Locale& locale = item->info.*field;
    if (iso)
        return locale ? QString::fromStdString(locale->stringify('_')) : QString();
    return QString::fromStdString(langutils::displayTextOr(locale, "Other"));
}

QString DictionariesListModel::getTitle(int index) const {
    return text(index, &DictionaryInfo::name);
}

QString DictionariesListModel::getDisplayTitle(int index) const {
    const Item* const item = itemAt(index);
    if (!item)
        return {};
    if (!langutils::hasDisplayText(item->info.languageFrom) ||
        !langutils::hasDisplayText(item->info.languageTo))
        return getTitle(index);
    return QStringLiteral("%1 → %2").arg(getLanguageFrom(index), getLanguageTo(index));
}

QString DictionariesListModel::getLanguageFrom(int index, bool iso) const {
    return language(index, &DictionaryInfo::languageFrom, iso);
}

QString DictionariesListModel::getLanguageTo(int index, bool iso) const {
    return language(index, &DictionaryInfo::languageTo, iso);
}

QString DictionariesListModel::getPublishDate(int index) const {
    return text(index, &DictionaryInfo::publishDate);
}
QString DictionariesListModel::getProvider(int index) const {
    return text(index, &DictionaryInfo::provider);
}
QString DictionariesListModel::getDescription(int index) const {
    return text(index, &DictionaryInfo::description);
}

QVariant DictionariesListModel::getHasDescription(int index) const {
    return !getDescription(index).isEmpty();
}

QString DictionariesListModel::getCoverUrl(int index) const {
    return text(index, &DictionaryInfo::thumbnail);
}

QString DictionariesListModel::getVersion(int index) const {
    const Item* const item = itemAt(index);
    return item ? QString::number(item->info.version) : QString();
}

QString DictionariesListModel::getSet(int index) const {
    return text(index, &DictionaryInfo::dictSet);
}
QString DictionariesListModel::getCategory(int index) const {
    return text(index, &DictionaryInfo::category);
}

bool DictionariesListModel::isSelected(int index) const {
    const Item* const item = itemAt(index);
    return item && item->selectedToDownload;
}

bool DictionariesListModel::isInstalled(int index) const {
    const Item* const item = itemAt(index);
    return item && item->installed;
}

DictionaryIdPair DictionariesListModel::idPair(int index) const {
    const Item* const item = itemAt(index);
    return item ? DictionaryIdPair(item->info.databaseId, item->info.serverId) : DictionaryIdPair(-1, -1);
}

int DictionariesListModel::indexOfId(int id, std::int32_t DictionaryInfo::*field) const {
    const auto found = std::find_if(m_dictionaries.begin(), m_dictionaries.end(),
                                    [&](const Item& item) { return item.info.*field == id; });
    return found == m_dictionaries.end() ? -1 : int(found - m_dictionaries.begin());
}

int DictionariesListModel::indexFromDatabaseId(int id) const {
    return indexOfId(id, &DictionaryInfo::databaseId);
}
int DictionariesListModel::indexFromServerId(int id) const {
    return indexOfId(id, &DictionaryInfo::serverId);
}

int DictionariesListModel::indexOfFile(const std::string& file) const {
    const auto found = std::find_if(m_dictionaries.begin(), m_dictionaries.end(),
                                    [&](const Item& item) { return item.info.file == file; });
    return found == m_dictionaries.end() ? -1 : int(found - m_dictionaries.begin());
}

} // namespace tessaly::dictionary
