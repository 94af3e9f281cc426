#pragma once

#include "screen.h"

namespace tessaly::tour {

/// How this device is used: with a finger, or with keys.
class Hand {
public:
    Hand(Screen& screen, bool touch)
        : m_screen(screen)
        , m_touch(touch) {}

    [[nodiscard]] Screen& screen() const { return m_screen; }
    [[nodiscard]] bool isTouch() const { return m_touch; }

    /// From the page to the list of dictionaries.
    void openDictionaries() const;
    /// Presses the list's button for more dictionaries.
    void askForMore() const;
    /// From the list of the installed ones to those to be had.
    void enterDownloadMode() const;
    /// The titles in the list, first those that a page in English is best read with.
    [[nodiscard]] QStringList titles() const;
    /// Marks the first so many of them and returns their titles.
    [[nodiscard]] QStringList mark(int count) const;
    /// Presses the button at the list's bottom. What follows may be over at once.
    void startDownload() const;
    /// Presses a button of a dialog.
    void press(const QString& text) const;
    /// Makes a message go.
    void acknowledge(const QString& message) const;
    /// Chooses a row of the list.
    void choose(const QString& title) const;
    /// Opens the information on a dictionary of the list.
    void openInformation(const QString& title) const;
    /// Presses the nearest with this text among what stands above a row of the list.
    void pressAbove(const QString& title, const QString& text) const;
    /// Leaves the interface, whatever it shows, for the page.
    void leave() const;
    /// Waits until the interface has gone by itself.
    void waitForPage() const;
    [[nodiscard]] bool isAtPage() const;

private:
    /// Taps on it, or moves the focus to it with this key and presses Enter.
    void use(const QString& text, Qt::Key towards) const;
    void moveToRow(const QString& title) const;

    Screen& m_screen;
    bool m_touch;
};

} // namespace tessaly::tour
