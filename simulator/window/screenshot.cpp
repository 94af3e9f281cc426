#include "screenshot.h"

#include <QCoreApplication>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QTimer>
#include <cstdio>

namespace tessaly::simulator {

namespace {

constexpr int settlingMs = 300; ///< for what the first picture sets off

void leave(bool isSaved, const QString& file) {
    if (!isSaved)
        std::fprintf(stderr, "tessaly-simulator: can not save the picture %s\n", qUtf8Printable(file));
    QCoreApplication::exit(isSaved ? 0 : 1);
}

void grab(QQuickWindow& window, const QString& file) {
    auto* const screen = window.findChild<QQuickItem*>(QStringLiteral("deviceScreen"));
    const QSharedPointer<QQuickItemGrabResult> result =
        screen ? screen->grabToImage(screen->size().toSize()) : nullptr;
    if (!result)
        return leave(false, file);
    QObject::connect(result.data(), &QQuickItemGrabResult::ready, &window,
                     [result, file] { leave(result->saveToFile(file), file); });
}

} // namespace

void saveScreenshot(QQuickWindow& window, const QString& file) {
    QTimer::singleShot(settlingMs, &window, [&window, file] { grab(window, file); });
}

} // namespace tessaly::simulator
