#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QStringList>
#include <vector>

/// Writes down every signal of an object's own classes (QObject's apart) as "name(arguments)", in the order
/// in which the recorder's thread hears of them: those of other threads arrive queued.
class SignalRecorder : public QObject {
public:
    explicit SignalRecorder(QObject* sender);

    /// What was recorded since the last call; without the signals whose names are in `left`.
    QStringList take(const QStringList& left = {});

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    std::vector<QMetaMethod> m_signals;
    QStringList m_recorded;
};
