#include "catalogue/cover_painter.h"

#include "catalogue/dictionary_record.h"
#include "catalogue/file_names.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace tessaly::server {

namespace {

constexpr QRect page(0, 0, 300, 400);
constexpr QRect band(22, 34, 256, 34);
constexpr QRect from(22, 92, 256, 92);
constexpr QRect to(22, 204, 256, 92);
constexpr QRect title(30, 308, 240, 62);

QFont font(int pixels, QFont::Weight weight = QFont::Normal) {
    QFont result(QStringLiteral("DejaVu Serif"));
    result.setStyleHint(QFont::Serif);
    result.setPixelSize(pixels);
    result.setWeight(weight);
    return result;
}

/// As big as the text can be in the box, up to `largest` pixels.
void drawFitting(QPainter& painter, const QRect& box, const QString& text, int largest,
                 QFont::Weight weight) {
    constexpr int flags = Qt::AlignCenter | Qt::TextWordWrap;
    for (int pixels = largest; pixels >= 10; --pixels) {
        painter.setFont(font(pixels, weight));
        if (box.contains(painter.boundingRect(box, flags, text)))
            break;
    }
    painter.drawText(box, flags, text);
}

void drawFrame(QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 4));
    painter.drawRect(page.adjusted(8, 8, -9, -9));
    painter.setPen(QPen(Qt::black, 1));
    painter.drawRect(page.adjusted(14, 14, -15, -15));
}

/// Points from the one language down to the other, in the middle of a thin rule.
void drawArrow(QPainter& painter) {
    const int middle = page.width() / 2;
    const int y = (from.bottom() + to.top()) / 2;
    painter.setPen(QPen(Qt::black, 1));
    painter.drawLine(60, y, middle - 22, y);
    painter.drawLine(middle + 22, y, page.width() - 60, y);
    QPainterPath arrow(QPointF(middle - 13, y - 7));
    arrow.lineTo(middle + 13, y - 7);
    arrow.lineTo(middle, y + 9);
    arrow.closeSubpath();
    painter.fillPath(arrow, Qt::black);
}

} // namespace

QByteArray paintCover(const DictionaryRecord& record) {
    QImage image(page.size(), QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    drawFrame(painter);

    painter.fillRect(band, Qt::black);
    painter.setPen(Qt::white);
    QFont spaced = font(15, QFont::Bold);
    spaced.setLetterSpacing(QFont::AbsoluteSpacing, 4);
    painter.setFont(spaced);
    painter.drawText(band, Qt::AlignCenter, record.set.toUpper());

    painter.setPen(Qt::black);
    drawFitting(painter, from, record.languageFrom.toUpper(), 88, QFont::Bold);
    drawFitting(painter, to, record.languageTo.toUpper(), 88, QFont::Bold);
    drawArrow(painter);
    painter.setPen(Qt::black);
    drawFitting(painter, title, readableName(record.name), 22, QFont::Normal);
    painter.end();

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

} // namespace tessaly::server
