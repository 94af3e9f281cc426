#include "current_dictionary.h"
#include "dictionarieslistmodel.h"
#include "list_traces.h"

#include <common_utilities/defer_sleep.h>

#include <QScopedValueRollback>
#include <iterator>

namespace tessaly::dictionary {

void DictionariesListModel::refreshData() {
    if (m_toDownloadModeRunning)
        return;
    const DeferSleep awake("tessaly::dictionary::DictionariesListModel::refreshData()");
    const QScopedValueRollback refreshing(m_isRefreshing, true);

    beginResetModel();
    m_dictionaries.clear();
    m_notInstalledDictionaries.clear();
    setIsDownloadMode(false);
    const std::string chosenName = CurrentDictionary(CurrentDictionary::Access::Read).name();

    const auto catalogue = m_dataManager.getDictionariesFromDB();
    if (catalogue.isLeft()) {
        Q_EMIT dataManagerError(int(catalogue.getLeft()));
        return; // without endResetModel(), on purpose
    }
    traces::verbose("DICTS FROM DB", catalogue.getRight());
    const auto installed = vl_api::enumDictionaries();
    traces::verbose("DICTS FROM ENUM", installed);
    showInstalled(catalogue.getRight(), installed);

    const vl_api::Dictionary* const chosen = installed.findByName(chosenName);
    const int chosenRow = chosen ? indexOfFile(chosen->file) : -1;
    setIsDictsAvailForDownload(!m_notInstalledDictionaries.empty());
    if (m_dictionaries.empty())
        Q_EMIT showEmptyScreen();
    endResetModel();

    setSelectedDictionaryIndex(chosenRow);
    if (chosenRow != -1) {
        Q_EMIT modelRefreshed();
        Q_EMIT choosedDictionaryTitleChanged(m_choosedDictionaryTitle);
    }
    traces::verbose("DICTS IN MODEL", m_dictionaries);
    traces::verbose("NOT INSTALLED DICTS", m_notInstalledDictionaries);
}

void DictionariesListModel::showInstalled(const std::vector<DictionaryInfo>& catalogue,
                                          const vl_api::DictionariesBimap& installed) {
    const auto separated = DictionaryInfo::separate(catalogue, installed);
    traces::verbose("SEPARATED DICTS", separated.dictionaries);
    traces::verbose("SEPARATED VL DICTS", separated.vlDictionaries);
    m_dictionaries = Item::vectorFromDictionaries(separated.dictionaries, false);
    auto uncatalogued = Item::vectorFromVlDictionaries(separated.vlDictionaries, false);
    m_dictionaries.insert(m_dictionaries.end(), std::make_move_iterator(uncatalogued.begin()),
                          std::make_move_iterator(uncatalogued.end()));
}

} // namespace tessaly::dictionary
