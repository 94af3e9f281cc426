#include "paper_screen.h"

#include <QKeyEvent>
#include <QPainter>
#include <QQuickWindow>
#include <utility>

namespace tessaly::simulator {

namespace {

constexpr int updateMs = 250;
constexpr int fastUpdateMs = 120;

void copy(const QRegion& region, const QImage& from, QImage& to) {
    QPainter painter(&to);
    painter.setClipRegion(region);
    painter.drawImage(0, 0, from);
}

} // namespace

PaperScreen::PaperScreen(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &PaperScreen::advance);
}

void PaperScreen::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickPaintedItem::itemChange(change, data);
    if (change == ItemVisibleHasChanged || change == ItemSceneChange)
        QMetaObject::invokeMethod(this, &PaperScreen::follow, Qt::QueuedConnection);
}

void PaperScreen::follow() {
    QQuickWindow* const wanted = isVisible() ? window() : nullptr;
    if (wanted == m_watched)
        return;
    if (m_watched) {
        m_watched->removeEventFilter(this);
        disconnect(m_watched, nullptr, this, nullptr);
    }
    m_watched = wanted;
    m_timer.stop();
    m_changes = {};
    m_pending = m_updating = {};
    m_shown = {};
    if (!wanted)
        return;
    wanted->installEventFilter(this);
    connect(wanted, &QQuickWindow::frameSwapped, this, &PaperScreen::look);
    look();
}

/// A look takes a frame of its own; more of them mean that there is more to see.
void PaperScreen::look() {
    ++m_framesSinceGrab;
    if (m_grab || !m_screen || !m_watched)
        return;
    m_framesSinceGrab = 0;
    m_grab = m_screen->grabToImage(m_screen->size().toSize());
    if (m_grab)
        connect(m_grab.data(), &QQuickItemGrabResult::ready, this, &PaperScreen::take);
}

void PaperScreen::take() {
    m_drawn = std::exchange(m_grab, {})->image().convertToFormat(QImage::Format_RGB32);
    m_pending += m_changes.take(m_drawn);
    if (m_shown.size() != m_drawn.size()) {
        m_shown = QImage(m_drawn.size(), QImage::Format_RGB32);
        m_shown.fill(Qt::white);
    }
    if (!m_timer.isActive())
        begin();
    if (m_framesSinceGrab > 1)
        look();
}

void PaperScreen::begin() {
    if (m_pending.isEmpty())
        return;
    m_updating = std::exchange(m_pending, {});
    m_next = m_isFast ? m_drawn.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::ThresholdDither)
                      : m_drawn.convertToFormat(QImage::Format_Grayscale8);
    count(m_updates + 1, m_area + double(fixture::FrameChanges::area(m_updating)) /
                                      double(fixture::FrameChanges::area(m_drawn.rect())));
    if (m_isFlashing) {
        m_shown.fill(Qt::black);
        update();
    }
    m_isFlashing = false;
    m_timer.start(m_isFast ? fastUpdateMs : updateMs);
}

void PaperScreen::advance() {
    copy(m_updating, m_next, m_shown);
    update();
    begin();
}

void PaperScreen::setFast(bool fast) {
    if (fast == m_isFast)
        return;
    m_isFast = fast;
    if (!fast && !m_drawn.isNull()) {
        m_pending = m_drawn.rect();
        m_isFlashing = true;
        if (!m_timer.isActive())
            begin();
    }
    Q_EMIT fastChanged();
}

void PaperScreen::paint(QPainter* painter) {
    if (!m_shown.isNull()) // scaled as a whole: thin lines don't fall between two pixels
        painter->drawImage(0, 0,
                           m_shown.scaled(size().toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

bool PaperScreen::eventFilter(QObject*, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress && !static_cast<QKeyEvent*>(event)->isAutoRepeat();
    if (isKey || event->type() == QEvent::MouseButtonPress || event->type() == QEvent::TouchBegin)
        count(0, 0);
    return false;
}

void PaperScreen::count(int updates, double area) {
    m_updates = updates;
    m_area = area;
    Q_EMIT updated();
}

} // namespace tessaly::simulator
