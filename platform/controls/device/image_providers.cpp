#include "image_providers.h"

#include "device_info_provider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace tessaly::controls {

namespace {

constexpr double designDpi = 300; // the icons are drawn for
constexpr QRgb disabledColor = 0xff8c8c8c;
constexpr double unbounded = 1 << 20;

/// The icon in one colour on transparent; nothing if there is no such icon.
QImage renderIcon(const QString& name, const QSize& requestedSize, QRgb color) {
    const QString file = QStringLiteral(":/tessaly/images/%1.svg").arg(name);
    if (!QFile::exists(file)) {
        qDebug("no icon %s", qPrintable(name));
        return {};
    }
    QSvgRenderer svg(file);
    QSizeF size = QSizeF(svg.defaultSize()) * DeviceInfoProvider::instance()->dpi() / designDpi;
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
QImage invert(const QImage& whiteIcon, bool disc) {
    QImage image(whiteIcon.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const QRectF whole = image.rect();
    if (disc) {
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

QImage finished(const QImage& image, QSize* size) {
    const QImage result = image.isNull() ? emptyImage() : image;
    if (size != nullptr)
        *size = result.size();
    return result;
}

} // namespace

IconProvider::IconProvider()
    : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage IconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const auto variant = [&id](QLatin1String suffix) { return id.endsWith(suffix); };
    const auto base = [&id](QLatin1String suffix) { return id.chopped(suffix.size()); };
    for (const QLatin1String suffix : {QLatin1String("_disabled"), QLatin1String("_gray")}) {
        if (variant(suffix))
            return finished(renderIcon(base(suffix), requestedSize, disabledColor), size);
    }
    if (const QLatin1String suffix("_inv"); variant(suffix)) {
        const QImage icon = renderIcon(base(suffix), requestedSize, qRgb(255, 255, 255));
        return finished(icon.isNull() ? icon : invert(icon, false), size);
    }
    return finished(renderIcon(id, requestedSize, qRgb(0, 0, 0)), size);
}

DiscIconProvider::DiscIconProvider()
    : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage DiscIconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QImage icon = renderIcon(id, requestedSize, qRgb(255, 255, 255));
    return finished(icon.isNull() ? icon : invert(icon, true), size);
}

} // namespace tessaly::controls
