#include <dictionaries/morph_map.h>

#include <utilities/locale.h>

namespace tessaly::dictionary {

MorphValue::MorphValue(QObject* parent)
    : QObject(parent) {}

void MorphValue::setValue(const QVariant& value) {
    if (m_value == value)
        return;
    m_value = value;
    Q_EMIT valueChanged(m_value);
}

MorphValue* MorphMap::at(const QString& code) {
    MorphValue*& entry = m_values[code];
    if (!entry) {
        entry = new MorphValue(this);
        beginFollowing();
        entry->setValue(find(code));
    }
    return entry;
}

void MorphMap::refresh() {
    // A handler may ask for another language meanwhile, which moves the table's entries.
    const QHash<QString, MorphValue*> values = m_values;
    for (auto entry = values.begin(); entry != values.end(); ++entry)
        entry.value()->setValue(find(entry.key()));
}

QStringList MorphMap::candidates(const QString& code) {
    const auto locale = utilities::locale_parser::tagged_parse(code.toStdString(), '_');
    if (locale.isLeft() || locale.getRight().language.empty())
        return {};
    QStringList codes{code};
    if (locale.getRight().region)
        codes.append(QString::fromStdString(locale.getRight().language));
    return codes;
}

} // namespace tessaly::dictionary
