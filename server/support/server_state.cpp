#include "support/server_state.h"

#include "support/failure.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>

namespace tessaly::server {

ServerState::ServerState(const QString& path)
    : m_path(path) {
    QFile file(path);
    if (!file.exists())
        return;
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
    const QJsonObject state = QJsonDocument::fromJson(file.readAll()).object();
    const int port = state.value(QLatin1String("port")).toInt(-1);
    m_nextRecord = state.value(QLatin1String("next_record")).toInt(-1);
    m_nextPackage = state.value(QLatin1String("next_package")).toInt(-1);
    if (port < 0 || port > 65535 || m_nextRecord < 1 || m_nextPackage < 1)
        throw Failure(QStringLiteral("%1 is damaged; remove it to start over with new numbers").arg(path));
    m_port = static_cast<quint16>(port);
    const QJsonObject records = state.value(QLatin1String("records")).toObject();
    for (auto record = records.begin(); record != records.end(); ++record) {
        m_records.insert(record.key(), record.value().toInt());
        m_nextRecord = std::max(m_nextRecord, record.value().toInt() + 1);
    }
}

void ServerState::setPort(quint16 port) {
    if (m_port == port)
        return;
    m_port = port;
    save();
}

int ServerState::recordNumber(const QString& fileName) {
    const auto known = m_records.constFind(fileName);
    if (known != m_records.constEnd())
        return *known;
    m_records.insert(fileName, m_nextRecord);
    return m_nextRecord++;
}

int ServerState::takePackageNumber() {
    const int number = m_nextPackage++;
    save();
    return number;
}

void ServerState::save() const {
    QJsonObject records;
    for (auto record = m_records.begin(); record != m_records.end(); ++record)
        records.insert(record.key(), record.value());
    const QJsonObject state{{QStringLiteral("port"), m_port},
                            {QStringLiteral("next_record"), m_nextRecord},
                            {QStringLiteral("next_package"), m_nextPackage},
                            {QStringLiteral("records"), records}};
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(state).toJson()) < 0 || !file.commit())
        throw Failure(QStringLiteral("cannot write %1: %2").arg(m_path, file.errorString()));
}

} // namespace tessaly::server
