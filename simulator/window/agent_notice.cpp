#include "agent_notice.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <base/device_root.h>
#include <vellum/device_state.h>

namespace tessaly::simulator {

namespace {

bool takesBack(int key) {
    return key == Qt::Key_Back || key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

AgentNotice::AgentNotice() {
    // The file of the device's state is replaced when it changes, so its folder is what can be watched.
    m_watcher.addPath(QString::fromStdString(base::hostPath("/var")));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &AgentNotice::follow);
}

void AgentNotice::follow() {
    const Kind kind = Kind(vellum::state::networkNotice());
    if (kind == m_kind)
        return;
    m_kind = kind;
    m_key = 0;
    QCoreApplication::instance()->removeEventFilter(this);
    if (kind != None)
        QCoreApplication::instance()->installEventFilter(this);
    Q_EMIT kindChanged();
}

void AgentNotice::takeBack() {
    vellum::state::setNetworkNotice(vellum::state::NetworkNotice::None);
    follow();
}

bool AgentNotice::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!watched->isWindowType() || (!isPress && event->type() != QEvent::KeyRelease))
        return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (isPress && !key->isAutoRepeat() && takesBack(key->key()))
        m_key = key->key();
    if (m_key == 0 || key->key() != m_key)
        return false;
    if (!isPress && !key->isAutoRepeat())
        takeBack();
    return true;
}

} // namespace tessaly::simulator
