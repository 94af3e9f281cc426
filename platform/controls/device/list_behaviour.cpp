#include "list_behaviour.h"

#include "long_key_navigation.h"

#include <QKeyEvent>

namespace tessaly::controls {

namespace {
constexpr int containMode = 4; // ListView.Contain
} // namespace

void ListBehaviour::setView(QQuickItem* view) {
    if (view == m_view)
        return;
    if (m_view) {
        m_view->removeEventFilter(this);
        disconnect(m_view, nullptr, this, nullptr);
    }
    m_view = view;
    if (view != nullptr) {
        view->installEventFilter(this);
        connect(view, SIGNAL(currentIndexChanged()), this, SIGNAL(activeFocusIndexChanged()));
        connect(view, &QQuickItem::activeFocusChanged, this, &ListBehaviour::activeFocusIndexChanged);
    }
    Q_EMIT viewChanged();
}

int ListBehaviour::activeFocusIndex() const {
    return m_view && m_view->hasActiveFocus() ? m_view->property("currentIndex").toInt() : -1;
}

void ListBehaviour::setActiveFocusIndex(int index) {
    if (!m_view || index < 0)
        return;
    if (focusFrom(index, 1) || focusFrom(index, -1)) {
        if (!m_view->hasActiveFocus())
            m_view->forceActiveFocus();
    }
}

bool ListBehaviour::takesFocus(const QQuickItem& row) {
    return row.isVisible() && row.isEnabled() && row.height() > 0;
}

bool ListBehaviour::isFirst(int row) const {
    const auto itemAt = [this](int index) {
        QQuickItem* item = nullptr;
        QMetaObject::invokeMethod(m_view, "itemAtIndex", Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, index));
        return item;
    };
    const QVariant top = m_view->property("contentY");
    for (int above = row - 1; above >= 0; --above) {
        const QQuickItem* item = itemAt(above);
        if (item == nullptr) {
            m_view->setProperty("contentY", itemAt(above + 1)->y() - 1); // makes what ends there
            item = itemAt(above);
        }
        if (item == nullptr || takesFocus(*item)) {
            m_view->setProperty("contentY", top);
            return false;
        }
    }
    return true;
}

bool ListBehaviour::focusFrom(int index, int step) {
    const int count = m_view->property("count").toInt();
    const int before = m_view->property("currentIndex").toInt();
    for (int row = index; row >= 0 && row < count; row += step) {
        m_view->setProperty("currentIndex", row); // makes its item, however far away it is
        const auto* const item = m_view->property("currentItem").value<QQuickItem*>();
        if (item != nullptr && takesFocus(*item)) {
            // A list whose highlight doesn't move doesn't follow it either.
            QMetaObject::invokeMethod(m_view, "positionViewAtIndex", Q_ARG(int, row),
                                      Q_ARG(int, containMode));
            if (isFirst(row)) // nothing else brings back the titles above, which take no focus
                QMetaObject::invokeMethod(m_view, "positionViewAtBeginning");
            return true;
        }
    }
    m_view->setProperty("currentIndex", before);
    return false;
}

bool ListBehaviour::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || watched != m_view)
        return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Up && key->key() != Qt::Key_Down)
        return false;
    if (LongKeyNavigation::handle(m_view, *key))
        return true;
    const int step = key->key() == Qt::Key_Up ? -1 : 1;
    return focusFrom(m_view->property("currentIndex").toInt() + step, step);
}

} // namespace tessaly::controls
