#pragma once

#include <QPointer>
#include <QQmlParserStatus>
#include <QQmlProperty>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace tessaly::controls {

/// A property of another object under a name of its own: `value` follows it and writes it. GUI thread.
class PropertyProxy : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QObject* target READ target WRITE setTarget NOTIFY targetChanged)
    Q_PROPERTY(QString propertyName READ propertyName WRITE setPropertyName NOTIFY propertyNameChanged)
    /// Undefined while the target has no such property.
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY valueChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QObject* target() const { return m_target; }
    void setTarget(QObject* target);
    [[nodiscard]] QString propertyName() const { return m_propertyName; }
    void setPropertyName(const QString& name);
    [[nodiscard]] QVariant value() const { return m_property.read(); }
    void setValue(const QVariant& value);

Q_SIGNALS:
    void targetChanged();
    void propertyNameChanged();
    void valueChanged();

private:
    void follow();

    QPointer<QObject> m_target;
    QString m_propertyName;
    QQmlProperty m_property;
};

} // namespace tessaly::controls
