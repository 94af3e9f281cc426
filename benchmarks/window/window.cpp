#include "window.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace tessaly::benchmarks {

namespace {

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
