#pragma once

#include <simulator/fixture/frame_changes.h>

#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickPaintedItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace tessaly::simulator {

/// The device's screen as electronic paper shows it: only what changed is drawn anew, and each update takes
/// its time, in which the next changes gather. Lies over the screen while it is visible. GUI thread.
class PaperScreen : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// What the device draws.
    Q_PROPERTY(QQuickItem* screen MEMBER m_screen NOTIFY screenChanged)
    /// The fast mode: pure black and white, in half the time. Its end draws everything anew, with a flash.
    Q_PROPERTY(bool fast READ isFast WRITE setFast NOTIFY fastChanged)
    /// Since the user's last key or touch: how often something was drawn, and how many screens that is.
    Q_PROPERTY(int updates READ updates NOTIFY updated)
    Q_PROPERTY(double area READ area NOTIFY updated)

public:
    explicit PaperScreen(QQuickItem* parent = nullptr);

    [[nodiscard]] bool isFast() const { return m_isFast; }
    void setFast(bool fast);
    [[nodiscard]] int updates() const { return m_updates; }
    [[nodiscard]] double area() const { return m_area; }

    void paint(QPainter* painter) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void screenChanged();
    void fastChanged();
    void updated();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void follow();
    void look();
    void take();
    void begin();
    void advance();
    void count(int updates, double area);

    QPointer<QQuickItem> m_screen;
    QPointer<QQuickWindow> m_watched; ///< the window, while this is visible
    fixture::FrameChanges m_changes;
    QSharedPointer<QQuickItemGrabResult> m_grab; ///< under way
    int m_framesSinceGrab = 0;
    QImage m_drawn;    ///< by the device
    QRegion m_pending; ///< not begun yet
    QRegion m_updating;
    QImage m_next; ///< what the update ends with
    QImage m_shown;
    QTimer m_timer; ///< runs during an update
    bool m_isFast = false;
    bool m_isFlashing = false;
    int m_updates = 0;
    double m_area = 0;
};

} // namespace tessaly::simulator
