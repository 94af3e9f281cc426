#include "seen_items.h"

#include <QQuickWindow>
#include <QRegularExpression>
#include <algorithm>

namespace {

/// Whether what is there in the window isn't cut off by what the item is in.
bool isSeenAt(const QQuickItem& item, const QPointF& place) {
    for (const QQuickItem* around = item.parentItem(); around != nullptr; around = around->parentItem()) {
        if (around->clip() && !around->contains(around->mapFromScene(place)))
            return false;
    }
    return QRectF({}, item.window()->size()).contains(place);
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

QPointF centreOf(const QQuickItem& item) {
    return item.mapToScene(QPointF(item.width() / 2, item.height() / 2));
}

QList<QQuickItem*> visibleItems(const QQuickItem& item) {
    QList<QQuickItem*> found;
    for (QQuickItem* const child : inPaintOrder(item)) {
        if (child->isVisible() && child->opacity() > 0)
            found << child << visibleItems(*child);
    }
    return found;
}

QList<QQuickItem*> seenItems(const QQuickItem& item) {
    QList<QQuickItem*> items = visibleItems(item);
    items.removeIf([](const QQuickItem* each) {
        return each->width() <= 0 || each->height() <= 0 || !isSeenAt(*each, centreOf(*each));
    });
    return items;
}

QQuickItem* findSeen(const QQuickItem& in,
                     const std::function<bool(const QQuickItem&, const QString&)>& fits) {
    const auto isButton = [](const QQuickItem& item) { return item.inherits("QQuickAbstractButton"); };
    QQuickItem* found = nullptr;
    for (QQuickItem* const item : seenItems(in)) {
        const QString text = textOf(*item);
        if (!text.isEmpty() && fits(*item, text) &&
            (found == nullptr || isButton(*item) || !isButton(*found)))
            found = item;
    }
    return found;
}

QList<SeenWord> seenWords(const QQuickItem& item) {
    static const QRegularExpression word(QStringLiteral("\\w+"),
                                         QRegularExpression::UseUnicodePropertiesOption);
    QList<SeenWord> found;
    for (QQuickItem* const edit : visibleItems(item)) {
        if (!edit->inherits("QQuickTextEdit"))
            continue;
        QString text;
        QMetaObject::invokeMethod(edit, "getText", Q_RETURN_ARG(QString, text), Q_ARG(int, 0),
                                  Q_ARG(int, edit->property("length").toInt()));
        for (auto match = word.globalMatch(text); match.hasNext();) {
            const auto at = match.next();
            QRectF letter;
            QMetaObject::invokeMethod(edit, "positionToRectangle", Q_RETURN_ARG(QRectF, letter),
                                      Q_ARG(int, int(at.capturedStart() + at.capturedLength() / 2)));
            const QPointF centre = edit->mapToScene(letter.center());
            if (isSeenAt(*edit, centre))
                found.append({at.captured(), centre});
        }
    }
    return found;
}
