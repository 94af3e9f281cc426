#pragma once

#include "control/switches.h"

#include <QJsonObject>
#include <QList>
#include <QMap>

namespace tessaly::server {

/// The switches, and what the server has seen since the last reset. For one thread.
class Control {
public:
    const Switches& switches() const { return m_switches; }

    /// {"reset": true} puts everything back, what else the object names is set after that; an error text if
    /// the object is wrong, and then nothing has changed.
    QString apply(QJsonObject object);

    void count(QLatin1String kind) { ++m_requests[kind]; }
    void report(int package) { m_reported << package; }

    QJsonObject toJson() const;

private:
    Switches m_switches;
    QMap<QString, int> m_requests;
    QList<int> m_reported;
};

} // namespace tessaly::server
