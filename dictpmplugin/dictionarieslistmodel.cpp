#include "dictionarieslistmodel.h"

#include "current_dictionary.h"
#include "db/dbholder.h"
#include "installed_files.h"
#include "list_traces.h"

#include <common_utilities/defer_sleep.h>
#include <common_utilities/log_line.h>

#include <QJSEngine>
#include <QScopedValueRollback>
#include <QStringList>
#include <QtConcurrent>
#include <algorithm>
#include <iterator>
#include <utility>

namespace tessaly::dictionary {

namespace {

/// The object that QML gets as well: an exception must not leave a slot that the meta-object system calls,
/// since no script engine lets one through.
class SharedModel final : public DictionariesListModel {
public:
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override {
        try {
            return DictionariesListModel::qt_metacall(call, id, arguments);
        } catch (const std::exception& exception) {
            LogLine(2) << "a call from outside failed: " << exception.what();
            return -1;
        }
    }
};

} // namespace

DictionariesListModel::DictionariesListModel()
    : m_dataManager(DBHolder::newDefault())
    , m_chooseDictionaryAction(QStringLiteral("@change_dictionary")) {
    using Self = DictionariesListModel;
    using News = DownloadModeNews;
    setIsConnectingToNet(false);
    connect(&m_watcher, &QFutureWatcherBase::finished, this, &Self::handleToDownloadModeFinished);
    connect(this, &Self::dictionaryDeleted, this, &Self::handleDictonaryDeleted);
    connect(this, &Self::selectedDictionaryIndexChanged, this,
            [this](int index) { setChoosedDictionaryTitle(getDisplayTitle(index)); });
    // Passed on at once, by the thread that emits: before the job's future ends.
    connect(m_news.get(), &News::isConnectingToNetChanged, this, &Self::isConnectingToNetChanged,
            Qt::DirectConnection);
    connect(m_news.get(), &News::dataManagerError, this, &Self::dataManagerError, Qt::DirectConnection);
    connect(m_news.get(), &News::noNewDictionaries, this, &Self::noNewDictionaries, Qt::DirectConnection);
}

DictionariesListModel::~DictionariesListModel() {
    m_watcher.waitForFinished();
}

DictionariesListModel* DictionariesListModel::instance() {
    static DictionariesListModel* const model = [] {
        auto* const created = new SharedModel;
        // From the first moment, so that no engine that gets hold of it ever deletes it.
        QJSEngine::setObjectOwnership(created, QJSEngine::CppOwnership);
        return created;
    }();
    return model;
}

QObject* DictionariesListModel::qmlInstance(QQmlEngine*, QJSEngine*) {
    return instance();
}

MorphExplorer* DictionariesListModel::morphExplorer() {
    if (!m_morphExplorer) {
        m_morphExplorer =
            new MorphExplorer(QString::fromStdString(morphology::HunspellSearcher::defaultDir()), this);
    }
    return m_morphExplorer;
}

int DictionariesListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : getCount();
}

QVariant DictionariesListModel::data(const QModelIndex& index, int role) const {
    const Item* const item = itemAt(index.row());
    return item ? item->value(role) : QVariant();
}

QString DictionariesListModel::text(int index, std::string DictionaryInfo::*field) const {
    const Item* const item = itemAt(index);
    return item ? QString::fromStdString(item->info.*field) : QString();
}

QString DictionariesListModel::language(int index, Item::Language language, bool iso) const {
    const Item* const item = itemAt(index);
    if (!item)
        return {};
    return iso ? item->languageCode(language) : item->languageName(language);
}

template<class Value>
int DictionariesListModel::rowOf(Value DictionaryInfo::*field, const Value& value) const {
    const auto found = std::find_if(m_dictionaries.begin(), m_dictionaries.end(),
                                    [&](const Item& item) { return item.info.*field == value; });
    return found == m_dictionaries.end() ? -1 : int(found - m_dictionaries.begin());
}

int DictionariesListModel::indexFromDatabaseId(int id) const {
    return rowOf(&DictionaryInfo::databaseId, id);
}

int DictionariesListModel::indexFromServerId(int id) const {
    return rowOf(&DictionaryInfo::serverId, id);
}

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
    const auto separated = DictionaryInfo::separate(catalogue.getRight(), installed);
    traces::verbose("SEPARATED DICTS", separated.dictionaries);
    traces::verbose("SEPARATED VL DICTS", separated.vlDictionaries);
    m_dictionaries = Item::vectorFromDictionaries(separated.dictionaries, false);
    auto uncatalogued = Item::vectorFromVlDictionaries(separated.vlDictionaries, false);
    std::move(uncatalogued.begin(), uncatalogued.end(), std::back_inserter(m_dictionaries));

    const vl_api::Dictionary* const chosen = installed.findByName(chosenName);
    const int chosenRow = chosen ? rowOf(&DictionaryInfo::file, chosen->file) : -1;
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
    m_watcher.setFuture(QtConcurrent::run(
        [dataManager = &m_dataManager, news = m_news] { return listDownloadable(*dataManager, *news); }));
}

void DictionariesListModel::handleToDownloadModeFinished() {
    if (!m_toDownloadModeRunning || !m_watcher.isFinished())
        return; // called by hand: no job has ended
    m_toDownloadModeRunning = false;
    auto found = m_watcher.future().takeResult();
    m_watcher.setFuture({}); // one whose result was taken never counts as finished again
    if (!found) {
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

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface's own signature
int DictionariesListModel::findByVLName(QString name) const {
    const std::string wanted = name.toStdString();
    const int row = rowOf(&DictionaryInfo::file, wanted);
    if (row != -1)
        return row;
    const auto installed = vl_api::enumDictionaries();
    const vl_api::Dictionary* const dictionary = installed.findByName(wanted);
    return dictionary ? rowOf(&DictionaryInfo::file, dictionary->file) : -1;
}

void DictionariesListModel::chooseDictionary(int index, bool close_app) {
    CurrentDictionary current(CurrentDictionary::Access::ReadWrite);
    const Item* const item = itemAt(index);
    if (!item)
        return;
    const auto installed = vl_api::enumDictionaries();
    const vl_api::Dictionary* const dictionary = installed.findByFileName(item->info.file);
    if (!dictionary) {
        LogLine(2) << "file `" << item->info.file << "` present in model but not exist on file system";
        return;
    }
    if (current.name() == dictionary->name)
        return;
    if (!CurrentDictionary::open(*dictionary) || !current.change(dictionary->name))
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

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface's own signature
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

void DictionariesListModel::reset() {
    beginResetModel();
    endResetModel();
}

void DictionariesListModel::close() {
    m_dataManager.stopConnecting();
}

void DictionariesListModel::setChoosedDictionaryTitle(QString title) {
    if (m_choosedDictionaryTitle == title)
        return;
    m_choosedDictionaryTitle = std::move(title);
    Q_EMIT choosedDictionaryTitleChanged(m_choosedDictionaryTitle);
}

void DictionariesListModel::setSelectedDictionaryIndex(int index) {
    if (m_selectedDictionaryIndex == index)
        return;
    m_selectedDictionaryIndex = index;
    Q_EMIT selectedDictionaryIndexChanged(index);
}

void DictionariesListModel::setIsDownloadMode(bool isDownloadMode) {
    if (m_isDownloadMode == isDownloadMode)
        return;
    m_isDownloadMode = isDownloadMode;
    Q_EMIT isDownloadModeChanged(isDownloadMode);
}

void DictionariesListModel::setIsDictsAvailForDownload(bool isDictsAvailForDownload) {
    if (m_isDictsAvailForDownload == isDictsAvailForDownload)
        return;
    m_isDictsAvailForDownload = isDictsAvailForDownload;
    Q_EMIT setIsDictsAvailForDownloadChanged(isDictsAvailForDownload);
}

void DictionariesListModel::dump() {
    traces::dump(this, m_dictionaries, m_notInstalledDictionaries);
}

} // namespace tessaly::dictionary
