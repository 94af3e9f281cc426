#pragma once

#include <QList>
#include <QQuickItem>

namespace tessaly::tour {

/// What an item says: its text, or else its title; empty if neither.
QString textOf(const QQuickItem& item);
bool isButton(const QQuickItem& item);

/// What is to be seen in `item`, as it is painted: what lies over something else comes later.
QList<QQuickItem*> seenItems(const QQuickItem& item);

/// In the window.
QPointF centreOf(const QQuickItem& item);
/// Whether one's middle is at a height of the other.
bool areInOneRow(const QQuickItem& one, const QQuickItem& other);

} // namespace tessaly::tour
