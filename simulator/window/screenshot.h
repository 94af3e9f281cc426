#pragma once

#include <QQuickWindow>
#include <QString>

namespace tessaly::simulator {

/// Saves a picture of the device's screen at its own size, as soon as it has been drawn, and then ends the
/// application: with status 1 if that fails.
void saveScreenshot(QQuickWindow& window, const QString& file);

} // namespace tessaly::simulator
