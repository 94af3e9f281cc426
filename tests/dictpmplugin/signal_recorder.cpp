#include "signal_recorder.h"

#include <QVariant>
#include <utility>

SignalRecorder::SignalRecorder(QObject* sender) {
    const QMetaObject& type = *sender->metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        const bool isWhole = !(method.attributes() & QMetaMethod::Cloned); // not one with arguments left out
        if (method.methodType() != QMetaMethod::Signal || !isWhole)
            continue;
        // The slots are numbers after those of QObject, which qt_metacall below takes.
        QMetaObject::connect(sender, i, this,
                             QObject::staticMetaObject.methodCount() + int(m_signals.size()));
        m_signals.push_back(method);
    }
}

int SignalRecorder::qt_metacall(QMetaObject::Call call, int id, void** arguments) {
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    const QMetaMethod& method = m_signals.at(std::size_t(id));
    QStringList texts;
    for (int i = 0; i < method.parameterCount(); ++i) {
        const QVariant value(method.parameterMetaType(i), arguments[i + 1]);
        texts << (value.canConvert<QString>() ? value.toString() : QString::fromUtf8(value.typeName()));
    }
    m_recorded << QString::fromUtf8(method.name()) + u'(' + texts.join(u", ") + u')';
    return -1;
}

QStringList SignalRecorder::take(const QStringList& left) {
    QStringList taken = std::exchange(m_recorded, {});
    taken.removeIf([&](const QString& text) { return left.contains(text.section(u'(', 0, 0)); });
    return taken;
}
