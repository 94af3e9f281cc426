#include "long_key_navigation.h"

namespace tessaly::controls {

namespace {
constexpr qint64 longPressMs = 500;
}

LongKeyNavigation::LongKeyNavigation(QObject* attachee)
    : QObject(attachee) {
    attachee->installEventFilter(this);
    // A key that brought the focus here, or took it away, isn't held for this item.
    if (const auto* const item = qobject_cast<QQuickItem*>(attachee))
        connect(item, &QQuickItem::activeFocusChanged, this, [this] { m_held.invalidate(); });
}

bool LongKeyNavigation::handle(QQuickItem* item, const QKeyEvent& key) {
    auto* const navigation =
        qobject_cast<LongKeyNavigation*>(qmlAttachedPropertiesObject<LongKeyNavigation>(item, false));
    return navigation != nullptr && navigation->handle(key);
}

bool LongKeyNavigation::eventFilter(QObject*, QEvent* event) {
    return event->type() == QEvent::KeyPress && handle(*static_cast<QKeyEvent*>(event));
}

QQuickItem* LongKeyNavigation::target(int key) const {
    switch (key) {
    case Qt::Key_Up:
        return m_up;
    case Qt::Key_Down:
        return m_down;
    case Qt::Key_Left:
        return m_left;
    case Qt::Key_Right:
        return m_right;
    default:
        return nullptr;
    }
}

bool LongKeyNavigation::handle(const QKeyEvent& key) {
    if (!key.isAutoRepeat()) {
        m_held.start();
        return false;
    }
    QQuickItem* const item = target(key.key());
    if (item == nullptr || !m_held.isValid() || !m_held.hasExpired(longPressMs) || !item->isEnabled() ||
        !item->isVisible())
        return false;
    m_held.invalidate(); // the rest of this press does nothing more here
    item->forceActiveFocus();
    return true;
}

} // namespace tessaly::controls
