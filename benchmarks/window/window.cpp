#include "window.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <algorithm>
#include <ctime>
#include <stdexcept>

namespace tessaly::benchmarks {

namespace {

constexpr int patienceMs = 10'000;
constexpr int momentMs = 60;
constexpr double idleMs = 0.3; ///< of processor time in a moment; looking takes some

QQuickItem* findListIn(const QQuickItem& item) {
    for (QQuickItem* const child : item.childItems()) {
        if (child->inherits("QQuickListView"))
            return child;
        if (QQuickItem* const found = findListIn(*child))
            return found;
    }
    return nullptr;
}

/// Delegates know their number; headers and the highlight don't.
QList<QQuickItem*> rows(const QQuickItem& list) {
    const auto* const content = list.property("contentItem").value<QQuickItem*>();
    const double top = list.property("contentY").toDouble();
    QList<QQuickItem*> found = content->childItems();
    found.removeIf([&](const QQuickItem* item) {
        const bool isInSight = item->isVisible() && item->height() > 0 && item->y() + item->height() > top &&
                               item->y() < top + list.height();
        return !isInSight || !item->property("index").isValid();
    });
    return found;
}

} // namespace

QQuickWindow& loadWindow(QQmlApplicationEngine& engine, QLatin1String document,
                         const QVariantMap& properties) {
    engine.addImportPath(QStringLiteral(TESSALY_QML_DIR));
    engine.setInitialProperties(properties);
    const qsizetype before = engine.rootObjects().size();
    engine.load(QUrl(QStringLiteral("qrc:/Tessaly/Benchmarks/qml/") + document));
    if (engine.rootObjects().size() == before)
        throw std::runtime_error("the window can not be shown");
    return *qobject_cast<QQuickWindow*>(engine.rootObjects().constLast());
}

QQuickItem* findList(const QQuickWindow& window) {
    return findListIn(*window.contentItem());
}

QQuickItem& requireList(const QQuickWindow& window) {
    QQuickItem* const list = findList(window);
    if (!list)
        throw std::runtime_error("the window has no list");
    return *list;
}

void waitForFrame(QQuickWindow& window) {
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    QTimer patience; // one that is gone with the wait: an idle program would be woken by it
    QObject::connect(&patience, &QTimer::timeout, &loop, [&loop] { loop.exit(1); });
    patience.start(patienceMs);
    if (loop.exec() != 0)
        throw std::runtime_error("no frame came");
}

void waitUntilIdle() {
    for (double before = 0; processMs() - before > idleMs;) {
        before = processMs();
        QEventLoop loop;
        QTimer::singleShot(momentMs, &loop, &QEventLoop::quit);
        loop.exec();
    }
}

void activate(QQuickWindow& window) {
    window.requestActivate();
    waitUntilIdle();
    if (!window.activeFocusItem())
        throw std::runtime_error("the window takes no keys");
}

void pressKey(QQuickWindow& window, Qt::Key key) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }
}

double processMs() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

int rowsInSight(const QQuickItem& list) {
    return int(rows(list).size());
}

double rowHeight(const QQuickItem& list) {
    std::vector<double> heights;
    for (const QQuickItem* const row : rows(list))
        heights.push_back(row->height());
    std::sort(heights.begin(), heights.end());
    return heights.empty() ? 0 : heights[heights.size() / 2];
}

} // namespace tessaly::benchmarks
