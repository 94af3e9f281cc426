#pragma once

#include <controls_device/export.h>

#include <QQuickImageProvider>

namespace tessaly::controls {

/// "image://resource/NAME": the icon of that name, black on transparent, at the screen's density unless a
/// size is asked for. NAME_inv is white on black, NAME_disabled and NAME_gray are grey. An unknown name is
/// logged and gives an empty image. Any thread.
class TESSALY_CONTROLS_DEVICE_API IconProvider : public QQuickImageProvider {
public:
    IconProvider();
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

/// "image://resource_inv_circle/NAME": the icon in white on a black disc.
class TESSALY_CONTROLS_DEVICE_API DiscIconProvider : public QQuickImageProvider {
public:
    DiscIconProvider();
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace tessaly::controls
