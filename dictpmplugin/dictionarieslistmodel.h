#pragma once

#include "data_manager.h"
#include "dictionary_id_pair.h"

#include <dictionaries/dictionary_info.h>
#include <dictionaries/morph_explorer.h>
#include <dictionaries/vl_api.h>

#include <QAbstractListModel>
#include <QFutureWatcher>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

class QJSEngine;
class QQmlEngine;

namespace tessaly::dictionary {

/// The list behind the whole interface: the installed dictionaries or, in download mode, those of the
/// server's catalogue that aren't installed. One object for the process; it lives until the process ends and
/// belongs to C++. Everything is used on its own thread, that of the interface; the download-mode job on a
/// worker touches only what is atomic, and hands over its result when it is done.
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
    /// One row. A plain value.
    struct Item {
        DictionaryInfo info;
        bool selectedToDownload = false;
        bool installed = false; ///< what the builders were told; nothing in the product tells them true

        static std::vector<Item> vectorFromDictionaries(const std::vector<DictionaryInfo>& records,
                                                        bool installed);
        /// Opens each dictionary for its metadata; one that can't be opened still gets a row, and a warning.
        static std::vector<Item> vectorFromVlDictionaries(const vl_api::DictionariesBimap& dictionaries,
                                                          bool installed);
    };

    DictionariesListModel();
    /// Waits for a running job.
    ~DictionariesListModel() override;

    static DictionariesListModel* instance();
    static QObject* qmlInstance(QQmlEngine* engine, QJSEngine* scriptEngine);
    static const char* qmlTypeName() { return "DictionariesListModel"; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] int selectedCount() const;
    [[nodiscard]] bool isDownloadMode() const { return m_isDownloadMode; }
    [[nodiscard]] bool isDictsAvailForDownload() const { return m_isDictsAvailForDownload; }
    [[nodiscard]] bool isConnectingToNet() const { return m_isConnectingToNet; } ///< any thread
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
    QString getTitle(int index) const;
    QString getDisplayTitle(int index) const;
    QString getLanguageFrom(int index, bool iso = false) const;
    QString getLanguageTo(int index, bool iso = false) const;
    QString getPublishDate(int index) const;
    QString getProvider(int index) const;
    QString getDescription(int index) const;
    QVariant getHasDescription(int index) const;
    QString getCoverUrl(int index) const;
    QString getVersion(int index) const;
    QString getSet(int index) const;
    QString getCategory(int index) const;
    bool isSelected(int index) const;
    bool isInstalled(int index) const;

    /// Makes a row's dictionary the reader's current one, if it is installed and opens.
    void chooseDictionary(int index, bool close_app = true);
    /// Starts the job that synchronises the catalogue and lists what isn't installed.
    void toDownloadMode();
    void handleToDownloadModeFinished();
    void handleDictonaryDeleted(QString lang1, QString lang2, int index);
    /// Deletes a row's file from the four dictionary folders. Throws std::out_of_range for a row past the
    /// end; a caller from QML gets a warning in the log instead.
    void deleteDict(int index);
    int getCount() const;
    void close();
    /// The row's numbers; (-1, -1) for a row that isn't there.
    DictionaryIdPair idPair(int index) const;
    int indexFromDatabaseId(int id) const;
    int indexFromServerId(int id) const;
    QString getSelectedIds();
    /// Tells no view that the row changed: views follow the count.
    void toggleSelected(int index);
    void setIsDownloadMode(bool isDownloadMode);
    void setIsDictsAvailForDownload(bool isDictsAvailForDownload);
    void setIsConnectingToNet(bool isConnectingToNet); // any thread
    void dump();
    /// The row of a file name or, failing that, of an installed dictionary's name; -1 if there is none.
    int findByVLName(QString name) const;

private:
    using Locale = boost::optional<utilities::Locale>;

    [[nodiscard]] const Item* itemAt(int index) const;
    [[nodiscard]] QString text(int index, std::string DictionaryInfo::*field) const;
    [[nodiscard]] QString language(int index, Locale DictionaryInfo::*field, bool iso) const;
    [[nodiscard]] int indexOfFile(const std::string& file) const;
    [[nodiscard]] int indexOfId(int id, std::int32_t DictionaryInfo::*field) const;
    void setSelectedDictionaryIndex(int index);
    void showInstalled(const std::vector<DictionaryInfo>& catalogue,
                       const vl_api::DictionariesBimap& installed);

    /// On a worker thread.
    bool runDownloadModeJob(std::vector<Item>& notInstalled);

    MorphExplorer* m_morphExplorer = nullptr;
    int m_selectedDictionaryIndex = -1;
    QString m_choosedDictionaryTitle;
    DataManager m_dataManager;
    QFutureWatcher<bool> m_watcher;
    std::vector<Item> m_notInstalledDictionaries;
    std::vector<Item> m_dictionaries;
    bool m_isDownloadMode = false;
    bool m_isDictsAvailForDownload = false;
    std::atomic<bool> m_isConnectingToNet{false};
    bool m_toDownloadModeRunning = false;
    bool m_isRefreshing = false;
    QString m_chooseDictionaryAction; ///< the reader's action of that name
    /// What the job found: written by the worker, read once its future is finished.
    std::shared_ptr<std::vector<Item>> m_jobResult;
};

} // namespace tessaly::dictionary
