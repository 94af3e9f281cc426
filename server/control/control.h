#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

namespace tessaly::server {

/// How the server misbehaves, for tests of the device's side, and what it has seen since the last reset. As
/// made, it behaves. What each switch may be and does is in the server's README. For one thread.
class Control {
public:
    Control();

    // `name` is one of the switches, as JSON has it.
    QString mode(QLatin1String name) const { return m_switches.value(name).toString(); }
    int number(QLatin1String name) const { return m_switches.value(name).toInt(); }
    /// The status N of a switch that reads "status:N", otherwise 0.
    int status(QLatin1String name) const;
    bool isUnlisted(int id) const;

    /// {"reset": true} puts everything back, what else the object names is set after that; an error text if
    /// the object is wrong, and then nothing has changed.
    QString apply(QJsonObject object);

    void count(QLatin1String kind) { ++m_requests[kind]; }
    void report(int package) { m_reported << package; }

    QJsonObject toJson() const;

private:
    QJsonObject m_switches;
    QMap<QString, int> m_requests;
    QList<int> m_reported;
};

} // namespace tessaly::server
