#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <common_utilities/defer_sleep.h>
#include <optional>

namespace tessaly::controls {

/// Keeps the device awake while it is active. GUI thread.
class SleepGuard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)

public:
    using QObject::QObject;

    [[nodiscard]] bool isActive() const { return m_request.has_value(); }
    void setActive(bool active) {
        if (active == isActive())
            return;
        if (active)
            m_request.emplace("controls");
        else
            m_request.reset();
        Q_EMIT activeChanged();
    }

Q_SIGNALS:
    void activeChanged();

private:
    std::optional<DeferSleep> m_request;
};

} // namespace tessaly::controls
