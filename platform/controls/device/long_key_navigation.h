#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly::controls {

/// Attached to an item: where the focus goes when an arrow key is held for half a second. GUI thread.
class LongKeyNavigation : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("LongKeyNavigation is only available as an attached property")
    QML_ATTACHED(tessaly::controls::LongKeyNavigation)
    Q_PROPERTY(QQuickItem* up MEMBER m_up NOTIFY changed)
    Q_PROPERTY(QQuickItem* down MEMBER m_down NOTIFY changed)
    Q_PROPERTY(QQuickItem* left MEMBER m_left NOTIFY changed)
    Q_PROPERTY(QQuickItem* right MEMBER m_right NOTIFY changed)

public:
    explicit LongKeyNavigation(QObject* attachee);
    static LongKeyNavigation* qmlAttachedProperties(QObject* attachee) {
        return new LongKeyNavigation(attachee);
    }

    /// True if the item has a place for this held key; the focus has then moved there.
    static bool handle(QQuickItem* item, const QKeyEvent& key);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QQuickItem* target(int key) const;
    bool handle(const QKeyEvent& key);

    QElapsedTimer m_held; // since the key came down
    QPointer<QQuickItem> m_up;
    QPointer<QQuickItem> m_down;
    QPointer<QQuickItem> m_left;
    QPointer<QQuickItem> m_right;
};

} // namespace tessaly::controls
