#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace tessaly::controls {

/// A horizontal line of square dots.
class DottedSeparator : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(qreal thickness READ thickness WRITE setThickness NOTIFY changed) ///< pixels; also its height

public:
    explicit DottedSeparator(QQuickItem* parent = nullptr);

    [[nodiscard]] qreal thickness() const { return implicitHeight(); }
    void setThickness(qreal thickness);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_color = Qt::black;
};

} // namespace tessaly::controls
