#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

/// Names one dictionary both in the local catalogue and on the server. A plain value.
class DictionaryIdPair {
    Q_GADGET
    Q_PROPERTY(int databaseId READ databaseId CONSTANT)
    Q_PROPERTY(int serverId READ serverId CONSTANT)

public:
    // The defaults are there because QML can't take a value that has no default constructor.
    explicit DictionaryIdPair(int databaseId = -1, int serverId = -1)
        : m_databaseId(databaseId)
        , m_serverId(serverId) {}

    [[nodiscard]] int databaseId() const { return m_databaseId; }
    [[nodiscard]] int serverId() const { return m_serverId; }

    Q_INVOKABLE QString toString() const {
        return QStringLiteral("DictionaryId { databaseId: %1, serverId: %2 }")
            .arg(m_databaseId)
            .arg(m_serverId);
    }

private:
    int m_databaseId;
    int m_serverId;
};

Q_DECLARE_METATYPE(DictionaryIdPair)
