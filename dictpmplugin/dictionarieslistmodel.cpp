#include "dictionarieslistmodel.h"

#include "db/dbholder.h"

#include <dictionaries/hunspell_searcher.h>
#include <vellum/vellum.h>

#include <QDebug>
#include <QJSEngine>
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
            ts_print_log2(2, "dictpmplugin/dictionarieslistmodel", __LINE__, __PRETTY_FUNCTION__,
                          "a call from outside failed: %s", exception.what());
            return -1;
        }
    }
};

void dumpItems(const std::vector<DictionariesListModel::Item>& items) {
    for (const auto& item : items)
        qDebug() << "    - " << item.info.name.c_str() << ", provider: " << item.info.provider.c_str()
                 << ", selected: " << (item.selectedToDownload ? "true" : "false");
}

} // namespace

DictionariesListModel::DictionariesListModel()
    : m_dataManager(DBHolder::newDefault())
    , m_chooseDictionaryAction(QStringLiteral("@change_dictionary")) {
    setIsConnectingToNet(false);
    connect(&m_watcher, &QFutureWatcher<bool>::finished, this,
            &DictionariesListModel::handleToDownloadModeFinished);
    connect(this, &DictionariesListModel::dictionaryDeleted, this,
            &DictionariesListModel::handleDictonaryDeleted);
    connect(this, &DictionariesListModel::selectedDictionaryIndexChanged, this,
            [this](int index) { setChoosedDictionaryTitle(getDisplayTitle(index)); });
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
    m_choosedDictionaryTitle = title;
    Q_EMIT choosedDictionaryTitleChanged(title);
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

void DictionariesListModel::setIsConnectingToNet(bool isConnectingToNet) {
    constexpr auto file = "dictpmplugin/dictionarieslistmodel";
    ts_print_log2(4, file, __LINE__, __PRETTY_FUNCTION__,
                  "=========================== setIsConnectingToNet: %d", int(isConnectingToNet));
    const bool was = m_isConnectingToNet.exchange(isConnectingToNet);
    ts_print_log2(4, file, __LINE__, __PRETTY_FUNCTION__,
                  "=========================== setIsConnectingToNet was: %d", int(was));
    if (was != isConnectingToNet)
        Q_EMIT isConnectingToNetChanged(isConnectingToNet);
}

void DictionariesListModel::dump() {
    qDebug() << "-------- DictionariesListModel dump (" << static_cast<const void*>(this) << ") --------";
    qDebug() << "  ------ dict info [" << m_dictionaries.size() << "]:";
    dumpItems(m_dictionaries);
    qDebug() << "  ------ m_notInstalledDictionaries [" << m_notInstalledDictionaries.size() << "]:";
    dumpItems(m_notInstalledDictionaries);
    qDebug() << "-------- End dump -------------------------------------------";
}

} // namespace tessaly::dictionary
