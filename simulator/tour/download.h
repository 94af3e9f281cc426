#pragma once

#include <QObject>
#include <vector>

namespace tessaly::tour {

/// Switches the list to download mode, which synchronises the catalogue. StepFailed if that doesn't come
/// about.
void enterDownloadMode();

/// Marks up to `count` rows of the list in download mode, the first of them from English if there is one, and
/// returns their server numbers.
std::vector<int> markDictionaries(int count);

/// One download of what is marked, and what the controller said about it.
class Download : public QObject {
public:
    Download();

    void start();
    [[nodiscard]] bool hasEnded() const { return m_ended; }
    /// Waits for syncFinished, and for its value to be `success`.
    void requireEnd(bool success);
    /// Waits until the state is the given one, without looking at anything else.
    static void waitForState(int state);

private:
    bool m_ended = false;
    bool m_success = false;
};

} // namespace tessaly::tour
