#include <dictionaries/morph_value.h>

namespace tessaly::dictionary {

MorphValue::MorphValue(QObject* parent)
    : QObject(parent) {}

void MorphValue::setValue(const QVariant& value) {
    if (m_value == value)
        return;
    m_value = value;
    Q_EMIT valueChanged(m_value);
}

} // namespace tessaly::dictionary
