#include "property_proxy.h"

namespace tessaly::controls {

void PropertyProxy::setTarget(QObject* target) {
    if (target == m_target)
        return;
    if (m_target)
        disconnect(m_target, nullptr, this, nullptr);
    m_target = target;
    follow();
    Q_EMIT targetChanged();
}

void PropertyProxy::setPropertyName(const QString& name) {
    if (name == m_propertyName)
        return;
    if (m_target)
        disconnect(m_target, nullptr, this, nullptr);
    m_propertyName = name;
    follow();
    Q_EMIT propertyNameChanged();
}

void PropertyProxy::follow() {
    m_property =
        m_target && !m_propertyName.isEmpty() ? QQmlProperty(m_target, m_propertyName) : QQmlProperty();
    if (m_property.isValid())
        m_property.connectNotifySignal(this, SIGNAL(valueChanged()));
    Q_EMIT valueChanged();
}

void PropertyProxy::setValue(const QVariant& value) {
    if (m_property.isValid() && m_property.read() != value)
        m_property.write(value);
}

} // namespace tessaly::controls
