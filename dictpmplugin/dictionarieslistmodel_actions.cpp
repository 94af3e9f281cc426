#include "LangUtils.h"
#include "current_dictionary.h"
#include "dictionarieslistmodel.h"
#include "dictionary_order.h"
#include "installed_files.h"
#include "list_traces.h"

#include <vellum/vellum.h>

#include <QStringList>
#include <QtConcurrent>
#include <algorithm>
#include <utility>

namespace tessaly::dictionary {

namespace {

constexpr auto logFile = "dictpmplugin/dictionarieslistmodel";

/// Makes the reader use a dictionary, by its name or else by its file name.
bool openInReader(const vl_api::Dictionary& dictionary) {
    int opened = OpenDictionary(dictionary.name.c_str());
    ts_print_log2(4, logFile, __LINE__, __PRETTY_FUNCTION__, "============================ is_ok is: [%d]",
                  opened);
    if (!opened) {
        opened = OpenDictionary(dictionary.file.c_str());
        ts_print_log2(4, logFile, __LINE__, __PRETTY_FUNCTION__,
                      "2 ====================================== is_ok is: [%d]", opened);
    }
    if (!opened) {
        ts_print_log2(2, logFile, __LINE__, __PRETTY_FUNCTION__, "ERROR OPENING DICTIONARY `%s` NOT FOUND.",
                      dictionary.name.c_str());
    }
    return opened;
}

} // namespace

void DictionariesListModel::toDownloadMode() {
    if (m_isRefreshing) {
        // Asked by a handler of the refresh's own signals: the job must not read the database beside it.
        QMetaObject::invokeMethod(this, &DictionariesListModel::toDownloadMode, Qt::QueuedConnection);
        return;
    }
    if (m_toDownloadModeRunning)
        return;
    m_toDownloadModeRunning = true;
    if (m_watcher.isRunning())
        return;
    m_notInstalledDictionaries.clear();
    m_jobResult = std::make_shared<std::vector<Item>>();
    m_watcher.setFuture(
        QtConcurrent::run([this, result = m_jobResult] { return runDownloadModeJob(*result); }));
}

bool DictionariesListModel::runDownloadModeJob(std::vector<Item>& notInstalled) {
    setIsConnectingToNet(true);
    if (const auto error = m_dataManager.synchronizeMetaData()) {
        Q_EMIT dataManagerError(int(*error));
        return false;
    }
    const auto fromNet = m_dataManager.getDictionariesFromNet();
    if (fromNet.isLeft()) {
        Q_EMIT dataManagerError(int(fromNet.getLeft()));
        return false;
    }
    traces::fromNet(fromNet.getRight());
    const auto installed = vl_api::enumDictionaries();
    auto offered = DictionaryInfo::subtractLists(fromNet.getRight(), installed);
    traces::installedBeside(fromNet.getRight(), installed);
    if (offered.empty()) {
        Q_EMIT noNewDictionaries();
        return false; // the connecting flag stays set, here and above, on purpose
    }
    setIsConnectingToNet(false);
    std::sort(offered.begin(), offered.end(), comesBefore);
    notInstalled = Item::vectorFromDictionaries(offered, false);
    return true;
}

void DictionariesListModel::handleToDownloadModeFinished() {
    const auto found = m_watcher.isFinished() ? std::exchange(m_jobResult, nullptr) : nullptr;
    if (!found)
        return; // called by hand: no job has ended
    m_toDownloadModeRunning = false;
    if (!m_watcher.result()) {
        Q_EMIT toDownloadModFailed();
        return;
    }
    m_notInstalledDictionaries = std::move(*found);
    beginResetModel();
    m_dictionaries = m_notInstalledDictionaries;
    setIsDownloadMode(true);
    endResetModel();
    Q_EMIT modelRefreshed();
}

int DictionariesListModel::selectedCount() const {
    return int(std::count_if(m_dictionaries.begin(), m_dictionaries.end(),
                             [](const Item& item) { return item.selectedToDownload; }));
}

std::vector<std::string> DictionariesListModel::selectedIds() const {
    std::vector<std::string> ids;
    for (const Item& item : m_dictionaries) {
        if (item.selectedToDownload)
            ids.push_back(std::to_string(item.info.serverId));
    }
    return ids;
}

QString DictionariesListModel::getSelectedIds() {
    QStringList ids;
    for (const std::string& id : selectedIds())
        ids.append(QString::fromStdString(id));
    return ids.join(u',');
}

int DictionariesListModel::findFirstSelectedToDownload() {
    const auto found = std::find_if(m_dictionaries.begin(), m_dictionaries.end(),
                                    [](const Item& item) { return item.selectedToDownload; });
    return found == m_dictionaries.end() ? -1 : int(found - m_dictionaries.begin());
}

void DictionariesListModel::toggleSelected(int index) {
    if (!itemAt(index))
        return;
    bool& selected = m_dictionaries[std::size_t(index)].selectedToDownload;
    selected = !selected;
    Q_EMIT selectedCountChanged();
}

int DictionariesListModel::findByVLName(QString name) const {
    const std::string wanted = name.toStdString();
    const int row = indexOfFile(wanted);
    if (row != -1)
        return row;
    const auto installed = vl_api::enumDictionaries();
    const vl_api::Dictionary* const dictionary = installed.findByName(wanted);
    return dictionary ? indexOfFile(dictionary->file) : -1;
}

void DictionariesListModel::chooseDictionary(int index, bool close_app) {
    CurrentDictionary current(CurrentDictionary::Access::ReadWrite);
    const Item* const item = itemAt(index);
    if (!item)
        return;
    const auto installed = vl_api::enumDictionaries();
    const vl_api::Dictionary* const dictionary = installed.findByFileName(item->info.file);
    if (!dictionary) {
        ts_print_log2(2, logFile, __LINE__, __PRETTY_FUNCTION__,
                      "file `%s` present in model but not exist on file system", item->info.file.c_str());
        return;
    }
    if (current.name() == dictionary->name)
        return;
    if (!openInReader(*dictionary) || !current.change(dictionary->name))
        return;
    setSelectedDictionaryIndex(index);
    Q_EMIT dictonaryChoosed(close_app);
}

void DictionariesListModel::deleteDict(int index) {
    if (index < 0)
        return;
    const DictionaryInfo info = m_dictionaries.at(std::size_t(index)).info;
    if (info.file.empty())
        return;
    removeInstalledFile(info.file);
    const QString lang1 = getLanguageFrom(index);
    const QString lang2 = getLanguageTo(index) + QStringLiteral(" (") +
                          QString::fromStdString(info.category) + QStringLiteral(")");
    Q_EMIT dictionaryDeleted(lang1, lang2, index);
}

void DictionariesListModel::handleDictonaryDeleted(QString, QString, int index) {
    if (getCount() > 1) {
        if (index == m_selectedDictionaryIndex) {
            const int next = index == 0 ? 1 : 0;
            setSelectedDictionaryIndex(next);
            chooseDictionary(next, false);
        }
        refreshData();
        return;
    }
    CurrentDictionary(CurrentDictionary::Access::ReadWrite).change("");
    setSelectedDictionaryIndex(-1);
    // Within a reset, so that attached views drop the row.
    beginResetModel();
    m_dictionaries.clear();
    endResetModel();
    Q_EMIT showEmptyScreen();
}

} // namespace tessaly::dictionary
