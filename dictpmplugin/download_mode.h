#pragma once

#include "dictionary_row.h"

#include <QObject>
#include <atomic>
#include <optional>
#include <vector>

namespace tessaly::dictionary {

class DataManager;

/// What the job below says while it runs, and whether it connects. Shared by the list model and its worker;
/// any thread. Signals are emitted by the thread that calls.
class DownloadModeNews : public QObject {
    Q_OBJECT

public:
    [[nodiscard]] bool isConnectingToNet() const { return m_isConnectingToNet; }
    void setIsConnectingToNet(bool isConnectingToNet);

Q_SIGNALS:
    void isConnectingToNetChanged(bool isConnectingToNet);
    void dataManagerError(int error);
    void noNewDictionaries();

private:
    std::atomic<bool> m_isConnectingToNet{false};
};

/// Synchronises the stored catalogue with the server's and returns those of the server's dictionaries that
/// aren't installed, sorted; nothing when that failed or when there are none, which `news` tells. Blocks; on
/// a worker thread, while nobody else uses the data manager.
std::optional<std::vector<DictionaryRow>> listDownloadable(DataManager& dataManager, DownloadModeNews& news);

/// Whether `a` comes before `b` in a catalogue list: by the name of the source language, then its code (names
/// may be shared: "pt" and "pt_BR", all that are unknown), then the name of the target language. An absent or
/// unknown language is named "Other". A strict weak ordering. Any thread.
bool comesBefore(const DictionaryInfo& a, const DictionaryInfo& b);

} // namespace tessaly::dictionary
