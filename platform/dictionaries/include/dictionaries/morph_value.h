#pragma once

#include <dictionaries/export.h>

#include <QObject>
#include <QVariant>

namespace tessaly::dictionary {

/// What a morphology map knows of one language, for bindings to follow. Owned by its map. GUI thread.
class TESSALY_DICTIONARIES_API MorphValue : public QObject {
    Q_OBJECT
    /// Invalid, which is undefined in QML, when there is none.
    Q_PROPERTY(QVariant value READ value NOTIFY valueChanged)

public:
    explicit MorphValue(QObject* parent);

    [[nodiscard]] QVariant value() const { return m_value; }
    void setValue(const QVariant& value);

Q_SIGNALS:
    void valueChanged(const QVariant& value);

private:
    QVariant m_value;
};

} // namespace tessaly::dictionary
