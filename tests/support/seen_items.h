#pragma once

#include <QList>
#include <QQuickItem>
#include <functional>

// What is to be seen in a window, found as a person would: by its text.

/// What an item says: its text, or else its title; empty if neither.
QString textOf(const QQuickItem& item);
/// In the window.
QPointF centreOf(const QQuickItem& item);

/// What is visible in `item`, wherever it lies, as it is painted: what lies over something else comes later.
QList<QQuickItem*> visibleItems(const QQuickItem& item);
/// Those of them of which at least the middle is to be seen.
QList<QQuickItem*> seenItems(const QQuickItem& item);
/// Of those whose text fits the front one, a button if there is one; null if there is none.
QQuickItem* findSeen(const QQuickItem& in,
                     const std::function<bool(const QQuickItem&, const QString&)>& fits);

struct SeenWord {
    QString text;
    QPointF centre; ///< in the window
};
/// The words of the longer text that is to be seen in `item`.
QList<SeenWord> seenWords(const QQuickItem& item);
