#include "page_scroll.h"

#include "../compare.h"
#include "window.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <limits>
#include <stdexcept>

namespace tessaly::benchmarks {

namespace {

constexpr int rounds = 4;
constexpr int pages = 8; ///< of a round
constexpr int settlingMs = 200;
constexpr int patienceMs = 10'000;

void waitForFrame(QQuickWindow& window) {
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    QTimer::singleShot(patienceMs, &loop, [&loop] { loop.exit(1); });
    if (loop.exec() != 0)
        throw std::runtime_error("no frame came");
}

void settle() {
    QEventLoop loop;
    QTimer::singleShot(settlingMs, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Only an active window passes keys on.
void activate(QQuickWindow& window) {
    window.requestActivate();
    settle();
    if (!window.activeFocusItem())
        throw std::runtime_error("the window takes no keys");
}

void turnPage(QQuickWindow& window, const QQuickItem& list) {
    const double before = list.property("contentY").toDouble();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_PageDown, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }
    waitForFrame(window);
    if (list.property("contentY").toDouble() < before + list.height() / 2 || rowsInSight(list) == 0)
        throw std::runtime_error("no page was turned");
}

/// The least processor time of a page of some, in milliseconds.
double turnPages(QQuickWindow& window, const QQuickItem& list) {
    activate(window);
    double least = std::numeric_limits<double>::max();
    for (int i = 0; i < pages; ++i)
        least = std::min(least, processorSeconds([&] { turnPage(window, list); }) * 1000);
    return least;
}

QQuickItem& requireList(const QQuickWindow& window) {
    QQuickItem* const list = findList(window);
    if (!list)
        throw std::runtime_error("the window has no list");
    return *list;
}

} // namespace

int scrollPages() {
    QQmlApplicationEngine engine;
    QQuickWindow& interface = loadWindow(engine, QLatin1String("InterfaceWindow.qml"));
    waitForFrame(interface);
    const QQuickItem& list = requireList(interface);
    QQuickWindow& plain = loadWindow(
        engine, QLatin1String("PlainListWindow.qml"),
        {{QStringLiteral("listHeight"), list.height()}, {QStringLiteral("rowHeight"), rowHeight(list)}});
    waitForFrame(plain);
    const QQuickItem& plainList = requireList(plain);
    double ours = std::numeric_limits<double>::max();
    double reference = ours;
    for (int i = 0; i < rounds; ++i) {
        ours = std::min(ours, turnPages(interface, list));
        reference = std::min(reference, turnPages(plain, plainList));
    }
    std::printf("%.4f %.4f %d %d\n", ours, reference, rowsInSight(list), rowsInSight(plainList));
    return 0;
}

} // namespace tessaly::benchmarks
