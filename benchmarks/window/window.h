#pragma once

#include <QLatin1String>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVariantMap>
#include <vector>

namespace tessaly::benchmarks {

/// The window of a document of this program, which belongs to the engine. Throws std::runtime_error.
QQuickWindow& loadWindow(QQmlApplicationEngine& engine, QLatin1String document,
                         const QVariantMap& properties = {});

/// The list in the window; null if there is none.
QQuickItem* findList(const QQuickWindow& window);
/// Throws std::runtime_error if there is none.
QQuickItem& requireList(const QQuickWindow& window);

/// Until the next frame. Throws std::runtime_error if none comes.
void waitForFrame(QQuickWindow& window);
/// Until the program has had nothing to do for a moment.
void waitUntilIdle();
/// Only an active window passes keys on.
void activate(QQuickWindow& window);
/// Presses a key and lets it go.
void pressKey(QQuickWindow& window, Qt::Key key);

/// Milliseconds of processor time that the whole program has spent.
double processMs();
double median(std::vector<double> values);

/// How many rows of the list are in sight.
int rowsInSight(const QQuickItem& list);

/// The height that most rows in sight have, 0 if there are none. Titles between them may have another.
double rowHeight(const QQuickItem& list);

} // namespace tessaly::benchmarks
