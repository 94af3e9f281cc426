#pragma once

#include "simulator/fixture/log_watch.h"
#include "simulator/fixture/seen_items.h"

#include <QAbstractItemModel>
#include <QQmlEngine>
#include <QQuickWindow>
#include <memory>

namespace tessaly::tour {

/// The device's screen in a window of its own size, used as a person would: what is seen is found by its
/// text, fingers and keys are real events of the window. Everything that isn't found, and every warning that
/// wasn't announced, is a StepFailed.
class Screen {
public:
    /// `folder` gets the pictures, numbered, with `name` in their names; empty: there are none. Adds to
    /// `pictureCount`.
    Screen(const QString& folder, const QString& name, LogWatch& watch, int& pictureCount);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Saves what is to be seen now.
    void picture(const QString& what);

    /// Whether something with this text, whatever its case, is to be seen.
    [[nodiscard]] bool shows(const QString& text) const { return find(text) != nullptr; }
    void waitFor(const QString& text, int timeoutMs = 15000);
    void waitUntilGone(const QString& text, int timeoutMs = 15000);
    /// Waits for an image that comes from a server.
    void waitForFetchedImage();

    /// A finger taps on the button, or else on the text. That stays pressed for a while before it acts: wait
    /// for what it does.
    void tap(const QString& text);
    /// The same at something in the row of another text.
    void tapBeside(const QString& rowText, const QString& text);
    /// The same at the nearest above the row of another text, a page of the list higher if need be.
    void tapAbove(const QString& rowText, const QString& text);
    void tapAt(const QPointF& place);
    void press(Qt::Key key, int times = 1);
    /// Presses `key` until what has the focus has this text.
    void moveTo(const QString& text, Qt::Key key);
    /// The text of what has the key focus.
    [[nodiscard]] QString focused() const;
    /// Turns pages of a list with `pageKey` until the text is to be seen.
    void scrollTo(const QString& text);

    /// All texts that are to be seen, from the back to the front.
    [[nodiscard]] QList<QQuickItem*> texts() const;
    /// The words of the page.
    [[nodiscard]] QList<SeenWord> words() const { return seenWords(*m_window.contentItem()); }

    [[nodiscard]] QAbstractItemModel& list() const;
    [[nodiscard]] QObject& download() const;

private:
    [[nodiscard]] QQuickItem* find(const QString& text, const QQuickItem* beside = nullptr) const;
    [[nodiscard]] QQuickItem* require(const QString& text, const QQuickItem* beside = nullptr) const;
    [[nodiscard]] QObject* singleton(const char* name) const;
    void tap(const QQuickItem& item);
    /// Until what an event set off is done and drawn.
    void settle();

    QString m_folder;
    QString m_name;
    LogWatch& m_watch;
    int& m_pictureCount;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_screen;
};

/// The text of a key of the interface in the device's language.
QString text(const char* key);

} // namespace tessaly::tour
