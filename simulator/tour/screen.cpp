#include "screen.h"

#include "step_log.h"

#include <QCoreApplication>
#include <QDir>
#include <QQmlComponent>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>

extern void qml_register_types_Tessaly_Simulator();

namespace tessaly::tour {

namespace {

/// Whether one's middle is at a height of the other.
bool areInOneRow(const QQuickItem& one, const QQuickItem& other) {
    const QRectF a = one.mapRectToScene(one.boundingRect());
    const QRectF b = other.mapRectToScene(other.boundingRect());
    const auto crosses = [](const QRectF& rect, double y) { return y >= rect.top() && y <= rect.bottom(); };
    return crosses(a, b.center().y()) || crosses(b, a.center().y());
}

} // namespace

QString text(const char* key) {
    return QCoreApplication::translate("keys", key);
}

Screen::Screen(const QString& folder, const QString& name, LogWatch& watch, int& pictureCount)
    : m_folder(folder)
    , m_name(name)
    , m_watch(watch)
    , m_pictureCount(pictureCount) {
    qml_register_types_Tessaly_Simulator();
    m_engine.addImportPath(QStringLiteral(TESSALY_QML_DIR));
    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/Tessaly/Simulator/qml/DeviceScreen.qml")));
    m_screen.reset(qobject_cast<QQuickItem*>(component.create()));
    tour::require(m_screen != nullptr, component.errorString());
    m_screen->setParentItem(m_window.contentItem());
    m_window.resize(m_screen->size().toSize());
    m_window.show();
    tour::require(QTest::qWaitForWindowActive(&m_window), QStringLiteral("the window isn't active"));
    m_screen->forceActiveFocus();
    settle();
}

Screen::~Screen() = default;

void Screen::settle() {
    // What an event sets off is done when it has been drawn.
    QSignalSpy drawn(&m_window, &QQuickWindow::frameSwapped);
    m_window.update();
    tour::require(drawn.wait(), QStringLiteral("nothing is drawn any more"));
    const QStringList complaints = m_watch.takeUnexpected();
    tour::require(complaints.isEmpty(),
                  QStringLiteral("complaint: ") + complaints.join(QStringLiteral("; ")));
}

void Screen::picture(const QString& what) {
    if (m_folder.isEmpty())
        return;
    settle();
    const QString file =
        QStringLiteral("%1/%2-%3-%4.png")
            .arg(m_folder, QString::number(++m_pictureCount).rightJustified(2, u'0'), m_name, what);
    tour::require(QDir().mkpath(m_folder) && m_window.grabWindow().save(file),
                  QStringLiteral("can not save ") + file);
}

QList<QQuickItem*> Screen::texts() const {
    QList<QQuickItem*> items = seenItems(*m_window.contentItem());
    items.removeIf([](const QQuickItem* item) { return textOf(*item).isEmpty(); });
    return items;
}

QQuickItem* Screen::find(const QString& text, const QQuickItem* beside) const {
    const auto fits = [&](const QQuickItem& item, const QString& said) {
        return said.compare(text, Qt::CaseInsensitive) == 0 &&
               (beside == nullptr || areInOneRow(item, *beside));
    };
    return findSeen(*m_window.contentItem(), fits);
}

QQuickItem* Screen::require(const QString& text, const QQuickItem* beside) const {
    QQuickItem* const item = find(text, beside);
    tour::require(item != nullptr, QStringLiteral("\"%1\" isn't to be seen").arg(text));
    return item;
}

void Screen::waitFor(const QString& text, int timeoutMs) {
    waitUntil([&] { return shows(text); }, QStringLiteral("\"%1\"").arg(text), timeoutMs);
    settle();
}

void Screen::waitUntilGone(const QString& text, int timeoutMs) {
    waitUntil([&] { return !shows(text); }, QStringLiteral("\"%1\" to go").arg(text), timeoutMs);
    settle();
}

void Screen::waitForFetchedImage() {
    constexpr int ready = 1;
    const auto isFetched = [](const QQuickItem* item) {
        return item->property("source").toUrl().scheme() == u"http" &&
               item->property("status").toInt() == ready;
    };
    waitUntil([&] { return std::ranges::any_of(seenItems(*m_window.contentItem()), isFetched); },
              QStringLiteral("a fetched image"));
    settle();
}

void Screen::tap(const QQuickItem& item) {
    tapAt(centreOf(item));
}

void Screen::tapAt(const QPointF& place) {
    QTest::mousePress(&m_window, Qt::LeftButton, {}, place.toPoint());
    QTest::mouseRelease(&m_window, Qt::LeftButton, {}, place.toPoint());
    settle();
}

void Screen::tap(const QString& text) {
    tap(*require(text));
}

void Screen::tapBeside(const QString& rowText, const QString& text) {
    tap(*require(text, require(rowText)));
}

void Screen::tapAbove(const QString& rowText, const QString& text) {
    const auto nearest = [&]() -> const QQuickItem* {
        const QQuickItem* const row = find(rowText);
        const QQuickItem* found = nullptr;
        for (const QQuickItem* const item : texts()) {
            if (textOf(*item) == text && (row == nullptr || centreOf(*item).y() < centreOf(*row).y()) &&
                (found == nullptr || centreOf(*item).y() > centreOf(*found).y()))
                found = item;
        }
        return found;
    };
    if (nearest() == nullptr)
        press(Qt::Key_PageUp);
    const QQuickItem* const item = nearest();
    tour::require(item != nullptr, QStringLiteral("\"%1\" isn't to be seen above \"%2\"").arg(text, rowText));
    tap(*item);
}

void Screen::press(Qt::Key key, int times) {
    for (int i = 0; i < times; ++i) {
        QTest::keyClick(&m_window, key);
        settle();
    }
}

QString Screen::focused() const {
    const QQuickItem* item = m_window.activeFocusItem();
    while (item != nullptr && textOf(*item).isEmpty())
        item = item->parentItem();
    return item != nullptr ? textOf(*item) : QString();
}

void Screen::moveTo(const QString& text, Qt::Key key) {
    constexpr int patience = 200;
    for (int i = 0; i < patience && focused().compare(text, Qt::CaseInsensitive) != 0; ++i)
        press(key);
    tour::require(focused().compare(text, Qt::CaseInsensitive) == 0,
                  QStringLiteral("the focus doesn't reach \"%1\", it is on \"%2\"").arg(text, focused()));
}

void Screen::scrollTo(const QString& text) {
    constexpr int patience = 100;
    for (int i = 0; i < patience && !shows(text); ++i)
        press(Qt::Key_PageDown);
    for (int i = 0; i < patience && !shows(text); ++i)
        press(Qt::Key_PageUp);
    (void)require(text);
}

QObject* Screen::singleton(const char* name) const {
    const int type = qmlTypeId("com.tessaly.dictionaries", 1, 0, name);
    auto* const object = const_cast<QQmlEngine&>(m_engine).singletonInstance<QObject*>(type);
    tour::require(object != nullptr, QStringLiteral("no %1").arg(QLatin1String(name)));
    return object;
}

QAbstractItemModel& Screen::list() const {
    return *qobject_cast<QAbstractItemModel*>(singleton("DictionariesListModel"));
}

QObject& Screen::download() const {
    return *singleton("DictPMController");
}

} // namespace tessaly::tour
