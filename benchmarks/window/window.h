#pragma once

#include <QLatin1String>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVariantMap>

namespace tessaly::benchmarks {

/// The window of a document of this program, which belongs to the engine. Throws std::runtime_error.
QQuickWindow& loadWindow(QQmlApplicationEngine& engine, QLatin1String document,
                         const QVariantMap& properties = {});

/// The list in the window; null if there is none.
QQuickItem* findList(const QQuickWindow& window);

/// How many rows of the list are in sight.
int rowsInSight(const QQuickItem& list);

/// The height that most rows in sight have, 0 if there are none. Titles between them may have another.
double rowHeight(const QQuickItem& list);

} // namespace tessaly::benchmarks
