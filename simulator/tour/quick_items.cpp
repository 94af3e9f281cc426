#include "quick_items.h"

#include <QQuickWindow>
#include <algorithm>

namespace tessaly::tour {

namespace {

/// Whether the middle of the item isn't cut off by what it is in.
bool isMiddleSeen(const QQuickItem& item) {
    const QPointF middle = centreOf(item);
    for (const QQuickItem* around = item.parentItem(); around != nullptr; around = around->parentItem()) {
        if (around->clip() && !around->contains(around->mapFromScene(middle)))
            return false;
    }
    return QRectF({}, item.window()->size()).contains(middle);
}

QList<QQuickItem*> inPaintOrder(const QQuickItem& item) {
    QList<QQuickItem*> children = item.childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](const QQuickItem* a, const QQuickItem* b) { return a->z() < b->z(); });
    return children;
}

} // namespace

QString textOf(const QQuickItem& item) {
    const QString text = item.property("text").toString();
    return text.isEmpty() ? item.property("title").toString() : text;
}

bool isButton(const QQuickItem& item) {
    return item.inherits("QQuickAbstractButton");
}

QList<QQuickItem*> seenItems(const QQuickItem& item) {
    QList<QQuickItem*> found;
    for (QQuickItem* const child : inPaintOrder(item)) {
        if (!child->isVisible() || child->opacity() <= 0)
            continue;
        if (child->width() > 0 && child->height() > 0 && isMiddleSeen(*child))
            found << child;
        found << seenItems(*child);
    }
    return found;
}

QPointF centreOf(const QQuickItem& item) {
    return item.mapToScene(QPointF(item.width() / 2, item.height() / 2));
}

bool areInOneRow(const QQuickItem& one, const QQuickItem& other) {
    const QRectF a = one.mapRectToScene(one.boundingRect());
    const QRectF b = other.mapRectToScene(other.boundingRect());
    const auto crosses = [](const QRectF& rect, double y) { return y >= rect.top() && y <= rect.bottom(); };
    return crosses(a, b.center().y()) || crosses(b, a.center().y());
}

} // namespace tessaly::tour
