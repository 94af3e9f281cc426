#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QMetaMethod>
#include <QTimer>
#include <QVariant>
#include <utility>
#include <vector>

/// Writes down every signal of an object's own classes (QObject's apart) as "name(arguments)", in the order
/// in which the recorder's thread hears of them: those of other threads arrive queued.
class SignalRecorder : public QObject {
public:
    explicit SignalRecorder(QObject* sender) {
        const QMetaObject& type = *sender->metaObject();
        for (int i = QObject::staticMetaObject.methodCount(); i < type.methodCount(); ++i) {
            const QMetaMethod method = type.method(i);
            const bool isWhole = !(method.attributes() & QMetaMethod::Cloned); // no arguments left out
            if (method.methodType() != QMetaMethod::Signal || !isWhole)
                continue;
            // The slots are numbers after those of QObject, which qt_metacall below takes.
            QMetaObject::connect(sender, i, this,
                                 QObject::staticMetaObject.methodCount() + int(m_signals.size()));
            m_signals.push_back(method);
        }
    }

    /// Something else that happened.
    void add(const QString& text) { m_recorded << text; }
    /// What was recorded since the last call.
    QStringList take() { return std::exchange(m_recorded, {}); }

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override {
        id = QObject::qt_metacall(call, id, arguments);
        if (id < 0 || call != QMetaObject::InvokeMetaMethod)
            return id;
        const QMetaMethod& method = m_signals.at(std::size_t(id));
        QStringList texts;
        for (int i = 0; i < method.parameterCount(); ++i)
            texts << QVariant(method.parameterMetaType(i), arguments[i + 1]).toString();
        m_recorded << QString::fromUtf8(method.name()) + u'(' + texts.join(u", ") + u')';
        return -1;
    }

private:
    std::vector<QMetaMethod> m_signals;
    QStringList m_recorded;
};

/// The milliseconds of each QTimer of the application's thread that ticks while it lives: of those that go
/// on, and of those that tick once. However late they tick.
class TickRecorder : public QObject {
public:
    TickRecorder() { qApp->installEventFilter(this); }

    QList<int> repeated, single;

    bool eventFilter(QObject* receiver, QEvent* event) override {
        const auto* const timer = event->type() == QEvent::Timer ? qobject_cast<QTimer*>(receiver) : nullptr;
        if (timer)
            (timer->isSingleShot() ? single : repeated) << timer->interval();
        return false;
    }
};
