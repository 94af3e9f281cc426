#pragma once

#include "data_manager.h"
#include "dictionary_id_pair.h"
#include "dictionary_row.h"
#include "download_mode.h"

#include <dictionaries/morph_explorer.h>

#include <QAbstractListModel>
#include <QFutureWatcher>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QJSEngine;
class QQmlEngine;

namespace tessaly::dictionary {

/// The list behind the whole interface: the installed dictionaries or, in download mode, those of the
/// server's catalogue that aren't installed. One object for the process; it lives until the process ends and
/// belongs to C++. Everything is used on its own thread, that of the interface. The download-mode job on a
/// worker uses two things of the model's: the data manager, and with it the database, which nobody else reads
/// while the job runs; and the news, through which it sets the connecting flag and emits dataManagerError and
/// noNewDictionaries. Its rows are what its future holds.
class DictionariesListModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectedCountChanged)
    Q_PROPERTY(bool isDownloadMode READ isDownloadMode WRITE setIsDownloadMode NOTIFY isDownloadModeChanged)
    Q_PROPERTY(bool isDictsAvailForDownload READ isDictsAvailForDownload WRITE setIsDictsAvailForDownload
                   NOTIFY setIsDictsAvailForDownloadChanged)
    Q_PROPERTY(bool isConnectingToNet READ isConnectingToNet WRITE setIsConnectingToNet NOTIFY
                   isConnectingToNetChanged)
    Q_PROPERTY(
        tessaly::dictionary::MorphExplorer* morphExplorer READ morphExplorer NOTIFY morphExplorerChanged)
    Q_PROPERTY(int selectedDictionaryIndex READ selectedDictionaryIndex NOTIFY selectedDictionaryIndexChanged)
    Q_PROPERTY(
        QString choosedDictionaryTitle READ choosedDictionaryTitle NOTIFY choosedDictionaryTitleChanged)

public:
    using Item = DictionaryRow;

    DictionariesListModel();
    /// Waits for a running job.
    ~DictionariesListModel() override;

    static DictionariesListModel* instance();
    static QObject* qmlInstance(QQmlEngine* engine, QJSEngine* scriptEngine);
    static const char* qmlTypeName() { return "DictionariesListModel"; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override { return Item::roleNames(); }

    [[nodiscard]] int selectedCount() const;
    [[nodiscard]] bool isDownloadMode() const { return m_isDownloadMode; }
    [[nodiscard]] bool isDictsAvailForDownload() const { return m_isDictsAvailForDownload; }
    [[nodiscard]] bool isConnectingToNet() const { return m_news->isConnectingToNet(); } // any thread
    [[nodiscard]] int selectedDictionaryIndex() const { return m_selectedDictionaryIndex; }
    [[nodiscard]] QString choosedDictionaryTitle() const { return m_choosedDictionaryTitle; }
    void setChoosedDictionaryTitle(QString title);

    /// Made on the first call and owned by the model.
    MorphExplorer* morphExplorer();

    /// The server numbers of the marked rows, in row order.
    [[nodiscard]] std::vector<std::string> selectedIds() const;

Q_SIGNALS:
    void morphExplorerChanged(tessaly::dictionary::MorphExplorer* value);
    void selectedDictionaryIndexChanged(int value);
    void choosedDictionaryTitleChanged(QString value);
    void selectedCountChanged();
    void isDownloadModeChanged(bool isDownloadMode);
    void setIsDictsAvailForDownloadChanged(bool isDictsAvailForDownload);
    void noNewDictionaries();
    void toDownloadModFailed();
    void dictionaryDeleted(QString lang1, QString lang2, int index);
    void dictonaryChoosed(bool close_app);
    void modelRefreshed();
    void showEmptyScreen();
    void isConnectingToNetChanged(bool isConnectingToNet);
    void dataManagerError(int error);

public Q_SLOTS:
    /// The first marked row, or -1.
    int findFirstSelectedToDownload();
    /// Shows the installed dictionaries. Refused while the download-mode job runs. When the stored catalogue
    /// can't be read, the reset that it began is not ended, on purpose.
    void refreshData();
    /// Lets views read everything again.
    void reset();

    // A row that isn't there gives an empty text or false.
    QString getTitle(int index) const { return text(index, &DictionaryInfo::name); }
    QString getDisplayTitle(int index) const {
        return itemAt(index) ? itemAt(index)->displayTitle() : QString();
    }
    QString getLanguageFrom(int index, bool iso = false) const {
        return language(index, &DictionaryInfo::languageFrom, iso);
    }
    QString getLanguageTo(int index, bool iso = false) const {
        return language(index, &DictionaryInfo::languageTo, iso);
    }
    QString getPublishDate(int index) const { return text(index, &DictionaryInfo::publishDate); }
    QString getProvider(int index) const { return text(index, &DictionaryInfo::provider); }
    QString getDescription(int index) const { return text(index, &DictionaryInfo::description); }
    QVariant getHasDescription(int index) const { return !getDescription(index).isEmpty(); }
    QString getCoverUrl(int index) const { return text(index, &DictionaryInfo::thumbnail); }
    QString getVersion(int index) const {
        return itemAt(index) ? QString::number(itemAt(index)->info.version) : QString();
    }
    QString getSet(int index) const { return text(index, &DictionaryInfo::dictSet); }
    QString getCategory(int index) const { return text(index, &DictionaryInfo::category); }
    bool isSelected(int index) const { return itemAt(index) && itemAt(index)->selectedToDownload; }
    bool isInstalled(int index) const { return itemAt(index) && itemAt(index)->installed; }

    /// Makes a row's dictionary the reader's current one, if it is installed and opens.
    void chooseDictionary(int index, bool close_app = true);
    /// Starts the job that synchronises the catalogue and lists what isn't installed.
    void toDownloadMode();
    void handleToDownloadModeFinished();
    void handleDictonaryDeleted(QString lang1, QString lang2, int index);
    /// Deletes a row's file from the four dictionary folders. Throws std::out_of_range for a row past the
    /// end; a caller from QML gets a warning in the log instead.
    void deleteDict(int index);
    int getCount() const { return int(m_dictionaries.size()); }
    void close();
    /// The row's numbers; (-1, -1) for a row that isn't there.
    DictionaryIdPair idPair(int index) const {
        const Item* const item = itemAt(index);
        return item ? DictionaryIdPair(item->info.databaseId, item->info.serverId) : DictionaryIdPair();
    }
    int indexFromDatabaseId(int id) const;
    int indexFromServerId(int id) const;
    QString getSelectedIds();
    /// Tells no view that the row changed: views follow the count.
    void toggleSelected(int index);
    void setIsDownloadMode(bool isDownloadMode);
    void setIsDictsAvailForDownload(bool isDictsAvailForDownload);
    void setIsConnectingToNet(bool isConnectingToNet) { // any thread
        m_news->setIsConnectingToNet(isConnectingToNet);
    }
    void dump();
    /// The row of a file name or, failing that, of an installed dictionary's name; -1 if there is none.
    int findByVLName(QString name) const;

private:
    [[nodiscard]] const Item* itemAt(int index) const {
        return index >= 0 && index < getCount() ? &m_dictionaries[std::size_t(index)] : nullptr;
    }
    [[nodiscard]] QString text(int index, std::string DictionaryInfo::*field) const;
    [[nodiscard]] QString language(int index, Item::Language language, bool iso) const;
    /// The first row whose field has this value, or -1.
    template<class Value>
    [[nodiscard]] int rowOf(Value DictionaryInfo::*field, const Value& value) const;
    void setSelectedDictionaryIndex(int index);

    MorphExplorer* m_morphExplorer = nullptr;
    int m_selectedDictionaryIndex = -1;
    QString m_choosedDictionaryTitle;
    DataManager m_dataManager;
    QFutureWatcher<std::optional<std::vector<Item>>> m_watcher;
    std::vector<Item> m_notInstalledDictionaries;
    std::vector<Item> m_dictionaries;
    bool m_isDownloadMode = false;
    bool m_isDictsAvailForDownload = false;
    std::shared_ptr<DownloadModeNews> m_news = std::make_shared<DownloadModeNews>();
    bool m_toDownloadModeRunning = false;
    bool m_isRefreshing = false;
    QString m_chooseDictionaryAction; ///< the reader's action of that name
};

} // namespace tessaly::dictionary
