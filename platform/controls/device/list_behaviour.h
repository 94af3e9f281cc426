#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tessaly::controls {

/// Moves the key focus through the rows of a ListView with Up and Down, past rows that can't take it
/// (disabled ones, those without height). At the ends the keys are left to the view's handlers. GUI thread.
class ListBehaviour : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* view READ view WRITE setView NOTIFY viewChanged)
    /// The row with the focus, or -1. Writing gives the focus to that row or to the nearest that takes it.
    Q_PROPERTY(
        int activeFocusIndex READ activeFocusIndex WRITE setActiveFocusIndex NOTIFY activeFocusIndexChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem* view() const { return m_view; }
    void setView(QQuickItem* view);
    [[nodiscard]] int activeFocusIndex() const;
    void setActiveFocusIndex(int index);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void viewChanged();
    void activeFocusIndexChanged();

private:
    /// The first row from `index` on, in steps, that takes the focus becomes the current one. False, and
    /// nothing changed, if there is none.
    bool focusFrom(int index, int step);
    static bool takesFocus(const QQuickItem& row);
    /// Whether no row above takes the focus.
    [[nodiscard]] bool isFirst(int row) const;

    QPointer<QQuickItem> m_view;
};

} // namespace tessaly::controls
