#include "dotted_separator.h"

#include <QPainter>
#include <QPixmap>
#include <QtMath>
#include <algorithm>

namespace tessaly::controls {

DottedSeparator::DottedSeparator(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setImplicitHeight(2);
    connect(this, &DottedSeparator::changed, this, [this] { update(); });
}

void DottedSeparator::setThickness(qreal thickness) {
    if (qFuzzyCompare(thickness, implicitHeight()))
        return;
    setImplicitHeight(thickness);
    Q_EMIT changed();
}

void DottedSeparator::paint(QPainter* painter) {
    // One tile repeated: a list draws a line of hundreds of dots for each row.
    const int dot = std::max(1, qRound(height()));
    QPixmap tile(3 * dot, dot);
    tile.fill(Qt::transparent);
    QPainter(&tile).fillRect(0, 0, dot, dot, m_color);
    painter->drawTiledPixmap(QRect(0, 0, qCeil(width()), dot), tile);
}

} // namespace tessaly::controls
