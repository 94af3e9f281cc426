#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <vellum/vellum.h>

namespace tessaly::controls {

/// Keeps the device awake while it is active. GUI thread.
class SleepGuard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)

public:
    using QObject::QObject;
    ~SleepGuard() override { setActive(false); }

    [[nodiscard]] bool isActive() const { return m_active; }
    void setActive(bool active) {
        if (active == m_active)
            return;
        m_active = active;
        if (active)
            vl_sleep_preventor_start(&m_request);
        else
            vl_sleep_preventor_stop(&m_request);
        Q_EMIT activeChanged();
    }

Q_SIGNALS:
    void activeChanged();

private:
    bool m_active = false;
    vl_sleep_preventor m_request{"controls", 0};
};

} // namespace tessaly::controls
