#include "icon_provider.h"

#include "device_info_provider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace tessaly::controls {

namespace {

constexpr double designDpi = 300; // the icons are drawn for
constexpr QRgb black = 0xff000000;
constexpr QRgb white = 0xffffffff;
constexpr QRgb grey = 0xff8c8c8c;
constexpr double unbounded = 1 << 20;

/// The icon in one colour on transparent; nothing if there is no such icon.
QImage renderIcon(const QString& name, double dpi, const QSize& requestedSize, QRgb color) {
    const QString file = QStringLiteral(":/tessaly/images/%1.svg").arg(name);
    if (!QFile::exists(file)) {
        qDebug("no icon %s", qPrintable(name));
        return {};
    }
    QSvgRenderer svg(file);
    QSizeF size = QSizeF(svg.defaultSize()) * dpi / designDpi;
    if (requestedSize.width() > 0 || requestedSize.height() > 0)
        size.scale(requestedSize.width() > 0 ? requestedSize.width() : unbounded,
                   requestedSize.height() > 0 ? requestedSize.height() : unbounded, Qt::KeepAspectRatio);
    QImage image(size.toSize().expandedTo({1, 1}), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    svg.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), QColor(color));
    return image;
}

/// White on a black shape of the icon's size.
QImage invert(const QImage& whiteIcon, bool onDisc) {
    if (whiteIcon.isNull())
        return {};
    QImage image(whiteIcon.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const QRectF whole = image.rect();
    if (onDisc) {
        painter.drawEllipse(whole);
        constexpr double inset = 0.14; // keeps the icon's corners on the disc
        painter.drawImage(whole.adjusted(whole.width() * inset, whole.height() * inset,
                                         -whole.width() * inset, -whole.height() * inset),
                          whiteIcon);
    } else {
        painter.drawRoundedRect(whole, whole.width() / 8, whole.height() / 8);
        painter.drawImage(whole, whiteIcon);
    }
    return image;
}

/// What an image element shows nothing for, and doesn't complain about.
QImage emptyImage() {
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

IconProvider::IconProvider(bool onDisc)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_onDisc(onDisc) {}

QImage IconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QString name = id.section(u'?', 0, 0);
    const double density = id.section(u'?', 1).toDouble(); // 0 if there is none
    const double dpi = density > 0 && qIsFinite(density) ? density : DeviceInfoProvider::instance()->dpi();
    const auto draw = [&](const char* suffix, QRgb color) {
        return renderIcon(name.chopped(qsizetype(qstrlen(suffix))), dpi, requestedSize, color);
    };
    QImage image;
    if (m_onDisc)
        image = invert(draw("", white), true);
    else if (name.endsWith(QLatin1String("_inv")))
        image = invert(draw("_inv", white), false);
    else if (name.endsWith(QLatin1String("_disabled")))
        image = draw("_disabled", grey);
    else if (name.endsWith(QLatin1String("_gray")))
        image = draw("_gray", grey);
    else
        image = draw("", black);
    if (image.isNull())
        image = emptyImage();
    if (size != nullptr)
        *size = image.size();
    return image;
}

} // namespace tessaly::controls
