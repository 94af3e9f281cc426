#pragma once

#include <QQuickImageProvider>

namespace tessaly::controls {

/// The interface's icons, black on transparent: "image://resource/NAME". NAME_inv is white on black,
/// NAME_disabled and NAME_gray are grey; "image://resource_inv_circle/NAME" is white on a black disc.
/// NAME?DPI is the icon for a screen of so many dots per inch, without them for that of the device now:
/// pictures are looked up by their address, so an element that outlives a change of screen needs them. A size
/// that is asked for goes before. An unknown name is logged and gives an empty image. Any thread.
class IconProvider : public QQuickImageProvider {
public:
    explicit IconProvider(bool onDisc);
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    const bool m_onDisc;
};

} // namespace tessaly::controls
