#pragma once

#include "hand.h"
#include "step_log.h"

namespace tessaly::fixture {
class TestDevice;
}

namespace tessaly::tour {

/// A reader with an empty device downloads, chooses, reads about, uses and deletes dictionaries.
class Journey {
public:
    Journey(fixture::TestDevice& device, const Hand& hand, StepLog& log)
        : m_device(device)
        , m_hand(hand)
        , m_log(log) {}

    /// Up to a word looked up in the chosen dictionary. False when there is nothing to go on with.
    bool downloadAndRead();
    /// What is known of it, its language's morphology.
    void lookAround();
    /// Deletes what was downloaded.
    void deleteAgain();

private:
    bool makeRoom();
    /// Its texts, and what it says of a word while there is no dictionary.
    void lookAtReader();
    /// To the dictionaries to be had, while the network agent says that it takes its time.
    void connectSlowly();
    void download();
    void choose(const QString& title);
    void lookUp(const SeenWord& word);
    void lookUpWord();
    void lookAtInformation(const QString& title, const QString& picture);
    void deleteDictionary(const QString& title);

    fixture::TestDevice& m_device;
    const Hand& m_hand;
    StepLog& m_log;
    QStringList m_titles;
};

/// Downloads that come to nothing: what the user sees of each, and that the device is as it was.
void playFailures(fixture::TestDevice& device, const Hand& hand, StepLog& log);

/// How much faster than on a device the product's waits for server and installer pass: nobody watches.
constexpr double clockSpeed = 20;

} // namespace tessaly::tour
