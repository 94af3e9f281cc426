#include "dotted_separator.h"

#include <QPainter>
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
    const int dot = std::max(1, qRound(height()));
    for (int x = 0; x < width(); x += 3 * dot)
        painter->fillRect(x, 0, dot, dot, m_color);
}

} // namespace tessaly::controls
