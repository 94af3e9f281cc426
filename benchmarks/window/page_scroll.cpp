#include "modes.h"
#include "window.h"

#include <cstdio>
#include <stdexcept>

namespace tessaly::benchmarks {

namespace {

constexpr int rounds = 4;
constexpr int pages = 8; ///< of a round

struct Pages {
    std::vector<double> untilFrame;
    std::vector<double> untilIdle;
};

void turnPages(QQuickWindow& window, const QQuickItem& list, Pages& times) {
    activate(window);
    for (int i = 0; i < pages; ++i) {
        const double before = list.property("contentY").toDouble();
        const double start = processMs();
        pressKey(window, Qt::Key_PageDown);
        waitForFrame(window);
        times.untilFrame.push_back(processMs() - start);
        waitUntilIdle();
        times.untilIdle.push_back(processMs() - start);
        if (list.property("contentY").toDouble() < before + list.height() / 2 || rowsInSight(list) == 0)
            throw std::runtime_error("no page was turned");
    }
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
    Pages ours;
    Pages reference;
    for (int i = 0; i < rounds; ++i) {
        turnPages(interface, list, ours);
        turnPages(plain, plainList, reference);
    }
    std::printf("%.4f %.4f %.4f %.4f\n", median(ours.untilFrame), median(reference.untilFrame),
                median(ours.untilIdle), median(reference.untilIdle));
    return 0;
}

} // namespace tessaly::benchmarks
