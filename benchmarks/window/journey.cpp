#include "modes.h"
#include "window.h"

#include <simulator/fixture/frame_changes.h>
#include <simulator/fixture/seen_items.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QTimer>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <utility>

namespace tessaly::benchmarks {

namespace {

using fixture::FrameChanges;

constexpr int idleSeconds = 10;

void wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

QString text(const char* key) {
    return QCoreApplication::translate("keys", key);
}

/// The front item that is to be seen with this text, or with a property of this name and value.
QQuickItem& find(const QQuickWindow& window, const QString& wanted, const char* property = nullptr) {
    QQuickItem* found = nullptr;
    if (property) {
        for (QQuickItem* const item : seenItems(*window.contentItem())) {
            if (item->property(property).toString().contains(wanted) && !found)
                found = item;
        }
    } else {
        found = findSeen(*window.contentItem(), [&](const QQuickItem&, const QString& said) {
            return said.compare(wanted, Qt::CaseInsensitive) == 0;
        });
    }
    if (!found)
        throw std::runtime_error("not to be seen: " + wanted.toStdString());
    return *found;
}

QRect placeOf(const QQuickItem& item) {
    return item.mapRectToScene(item.boundingRect()).toAlignedRect();
}

qint64 areaOf(const QQuickItem& item) {
    return qint64(item.width()) * qint64(item.height());
}

/// Where a busy ring turns; nowhere if none does.
QRect ringPlace(const QQuickWindow& window) {
    for (const QQuickItem* const item : visibleItems(*window.contentItem())) {
        if (item->inherits("QQuickBusyIndicator"))
            return placeOf(*item);
    }
    return {};
}

/// The interface on a screen, and what its frames change there.
class Journey {
public:
    explicit Journey(QQuickWindow& window)
        : m_window(window) {
        QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [this] { look(); });
    }

    /// An event of the user's, which ought to take so many changes of the screen.
    template<class Event>
    void step(int changes, Event event) {
        sinceThen = {};
        prescribed += changes;
        event();
        wait(300); // what is pressed stays so for a while
        waitUntilIdle();
    }

    /// A press and its release.
    void tap(const QQuickItem& item, int changes = 2) {
        const QPointF place = centreOf(item);
        step(changes, [&] {
            for (const auto& [type, buttons] : {std::pair{QEvent::MouseButtonPress, Qt::LeftButton},
                                                std::pair{QEvent::MouseButtonRelease, Qt::NoButton}}) {
                QMouseEvent event(type, place, m_window.mapToGlobal(place), Qt::LeftButton, buttons,
                                  Qt::NoModifier);
                QCoreApplication::sendEvent(&m_window, &event);
                if (type == QEvent::MouseButtonPress)
                    wait(250);
            }
        });
    }

    void press(Qt::Key key, int changes = 1) {
        step(changes, [&] { pressKey(m_window, key); });
    }

    int changedFrames = 0;
    int unchangedFrames = 0;
    int prescribed = 0;
    QRegion sinceThen; ///< what the last step changed

private:
    void look() {
        if (std::exchange(m_isLooking, true)) // a look takes a frame, too
            return;
        const QRegion changed = m_changes.take(m_window.grabWindow());
        m_isLooking = false;
        // A ring turns for as long as the server takes: those are no changes that a user's event asks for.
        if (!changed.isEmpty() && ringPlace(m_window).contains(changed.boundingRect()))
            return;
        ++(changed.isEmpty() ? unchangedFrames : changedFrames);
        sinceThen += changed;
    }

    QQuickWindow& m_window;
    FrameChanges m_changes;
    bool m_isLooking = false;
};

void waitForDownloadMode(const QQuickWindow& window) {
    constexpr int patience = 100;
    for (int i = 0; i < patience; ++i) {
        wait(50);
        if (!findList(window)->property("count").toInt())
            continue;
        for (const QQuickItem* const item : seenItems(*window.contentItem())) {
            if (textOf(*item) == text("@SelectDictionariesToDownload"))
                return;
        }
    }
    throw std::runtime_error("the interface shows nothing to download");
}

/// By keys a list has no page key (Page Up leads back): it moves row by row, once the focus is at its edge.
void turnPage(Journey& journey, const QQuickItem& list, Qt::Key key) {
    constexpr int mostRows = 20;
    const QVariant before = list.property("contentY");
    for (int i = 0; list.property("contentY") == before; ++i) {
        if (i == mostRows)
            throw std::runtime_error("the list doesn't move");
        journey.press(key);
    }
    const QRect place = placeOf(list);
    const QRect changed = journey.sinceThen.boundingRect();
    if (!place.contains(changed))
        throw std::runtime_error("a page that turns changes what is around the list, too");
}

} // namespace

int showAgain() {
    QQmlApplicationEngine engine;
    const double start = processMs();
    QQuickWindow& window = loadWindow(engine, QLatin1String("InterfaceWindow.qml"));
    do {
        waitForFrame(window);
    } while (rowsInSight(requireList(window)) == 0);
    const double first = processMs() - start;
    waitUntilIdle();
    QMetaObject::invokeMethod(&window, "leave");
    waitForFrame(window);
    waitUntilIdle();
    const double again = processMs();
    QMetaObject::invokeMethod(&window, "showAgain");
    do {
        waitForFrame(window);
    } while (rowsInSight(requireList(window)) == 0);
    std::printf("%.4f %.4f\n", first, processMs() - again);
    return 0;
}

int playJourney(bool touch) {
    QQmlApplicationEngine engine;
    QQuickWindow& window = loadWindow(engine, QLatin1String("InterfaceWindow.qml"));
    Journey journey(window);
    journey.step(1, [&] { activate(window); });
    const QQuickItem& list = requireList(window);
    const QQuickItem& button = find(window, text("@AddNewDictionaries"));
    const auto markArea = [&] { return FrameChanges::area(journey.sinceThen); };

    if (touch) {
        journey.tap(button, 3);
    } else {
        journey.press(Qt::Key_Up);
        journey.press(Qt::Key_Return, 2);
    }
    waitForDownloadMode(window);
    waitUntilIdle();

    const auto mark = [&] {
        if (touch)
            journey.tap(find(window, QStringLiteral("checkbox_square_off"), "image"));
        else
            journey.press(Qt::Key_Return);
    };
    mark();
    const qint64 marked = markArea();
    const double row = rowHeight(list);
    if (!touch)
        journey.press(Qt::Key_Down);
    mark();
    turnPage(journey, list, touch ? Qt::Key_PageDown : Qt::Key_Down);
    const qint64 turned = FrameChanges::area(journey.sinceThen);
    turnPage(journey, list, touch ? Qt::Key_PageUp : Qt::Key_Up);
    if (touch) {
        journey.tap(find(window, text("@Info")));
        journey.tap(find(window, text("@Back")));
        journey.tap(find(window, text("@Back")));
    } else {
        journey.press(Qt::Key_Right);
        journey.press(Qt::Key_Return);
        journey.press(Qt::Key_Back);
        journey.press(Qt::Key_Back);
    }
    journey.step(1, [&] { QMetaObject::invokeMethod(&window, "leave"); });
    std::printf("%d %d %d %lld %lld %lld %lld\n", journey.changedFrames, journey.prescribed,
                journey.unchangedFrames, marked, qint64(row * list.width()) + areaOf(button), turned,
                areaOf(list));
    return 0;
}

int stayIdle() {
    QQmlApplicationEngine engine;
    QQuickWindow& window = loadWindow(engine, QLatin1String("InterfaceWindow.qml"));
    waitForFrame(window);
    waitUntilIdle();
    int events = 0;
    QObject context;
    const auto count = [&events] { ++events; };
    QObject::connect(&window, &QQuickWindow::frameSwapped, &context, count);
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &context, count);
    const auto eventsIn = [&](int milliseconds) {
        events = 0;
        wait(milliseconds);
        return events;
    };
    const int ofWaiting = eventsIn(1);
    std::printf("%d %d\n", eventsIn(idleSeconds * 1000) - ofWaiting, idleSeconds);
    return 0;
}

} // namespace tessaly::benchmarks
