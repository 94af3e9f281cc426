#include "screenshot.h"

#include <QCoreApplication>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QTimer>

namespace tessaly::simulator {

namespace {

constexpr int settlingMs = 300; ///< for what the first picture sets off

void leave(bool isSaved) {
    QCoreApplication::exit(isSaved ? 0 : 1);
}

void grab(QQuickWindow& window, const QString& file) {
    auto* const screen = window.findChild<QQuickItem*>(QStringLiteral("deviceScreen"));
    const QSharedPointer<QQuickItemGrabResult> result =
        screen ? screen->grabToImage(screen->size().toSize()) : nullptr;
    if (!result)
        return leave(false);
    QObject::connect(result.data(), &QQuickItemGrabResult::ready, &window,
                     [result, file] { leave(result->saveToFile(file)); });
}

} // namespace

void saveScreenshot(QQuickWindow& window, const QString& file) {
    QTimer::singleShot(settlingMs, &window, [&window, file] { grab(window, file); });
}

} // namespace tessaly::simulator
