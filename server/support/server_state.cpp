#include "support/server_state.h"

#include "support/files.h"

#include <QFileInfo>
#include <QJsonDocument>

namespace tessaly::server {

ServerState::ServerState(const QString& path)
    : m_path(path)
    , m_state{{QStringLiteral("port"), 0},
              {QStringLiteral("next_record"), 1},
              {QStringLiteral("next_package"), 1},
              {QStringLiteral("records"), QJsonObject()}} {
    if (!QFileInfo::exists(path))
        return;
    const QStringList keys = m_state.keys();
    m_state = QJsonDocument::fromJson(readFile(path)).object();
    if (m_state.keys() != keys)
        throw Failure(QStringLiteral("%1 is damaged; remove it to start over with new numbers").arg(path));
}

void ServerState::setPort(quint16 port) {
    m_state[QLatin1String("port")] = port;
    save();
}

int ServerState::recordNumber(const QString& fileName) {
    QJsonObject records = m_state.value(QLatin1String("records")).toObject();
    if (!records.contains(fileName)) {
        records.insert(fileName, takeNumber(QLatin1String("next_record")));
        m_state[QLatin1String("records")] = records;
    }
    return records.value(fileName).toInt();
}

int ServerState::takeNumber(QLatin1String counter) {
    const int number = m_state.value(counter).toInt();
    m_state[counter] = number + 1;
    return number;
}

void ServerState::save() const {
    replaceFile(m_path, QJsonDocument(m_state).toJson());
}

} // namespace tessaly::server
