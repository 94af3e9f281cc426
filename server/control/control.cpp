#include "control/control.h"

#include <QJsonArray>

namespace tessaly::server {

QString Control::apply(QJsonObject object) {
    Control changed = *this;
    if (object.take(QLatin1String("reset")).toBool())
        changed = Control();
    QString error = changed.m_switches.apply(object);
    if (error.isEmpty())
        *this = changed;
    return error;
}

QJsonObject Control::toJson() const {
    QJsonObject requests;
    for (auto entry = m_requests.begin(); entry != m_requests.end(); ++entry)
        requests.insert(entry.key(), entry.value());
    QJsonArray reported;
    for (const int package : m_reported)
        reported << package;
    return {{QStringLiteral("switches"), m_switches.toJson()},
            {QStringLiteral("requests"), requests},
            {QStringLiteral("reported"), reported}};
}

} // namespace tessaly::server
