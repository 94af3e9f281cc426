#include "connector.h"

#include "db/dbholder.h"

#include <dictionaries/routes.h>
#include <vellum/vellum.h>

#include <QDebug>
#include <cstring>

namespace tessaly::dictionary {

namespace {

constexpr int connectedState = 2;
constexpr int attemptLimit = 30;
constexpr int pollIntervalMs = 1000;
constexpr int agentFlags = 0x40000000;

/// The agent may use its argument for as long as it likes: never freed, and one for all agents.
char* agentArgument() {
    static char* const argument = strdup("connect_silent");
    return argument;
}

} // namespace

Connector::Connector(const std::shared_ptr<DBHolder>& holder, QObject* parent)
    : QObject(parent)
    , m_dbHolder(holder) {
    connect(&m_pollTimer, &QTimer::timeout, this, &Connector::tryConnectToInet);
}

int Connector::connectToInet() {
    const char* const arguments[] = {agentArgument(), nullptr};
    const int agent = OpenTask("/ebrmain/bin/netagent", 2, arguments, agentFlags);
    m_pollTimer.start(pollIntervalMs);
    return agent;
}

void Connector::setClose() {
    m_close = true;
}

void Connector::tryConnectToInet() {
    if (GetNetState() == connectedState) {
        m_pollTimer.stop();
        return;
    }
    const int attempt = m_attempts++;
    if (m_close || attempt >= attemptLimit) {
        Q_EMIT finished(false);
        return;
    }
    const auto dictionaries = Routes::listDictionaries(default_base_url());
    if (dictionaries.isLeft()) {
        qDebug() << "[connector] error while listDictionaries performing:"
                 << to_string(dictionaries.getLeft()).c_str();
        Q_EMIT finished(false);
        return;
    }
    // A database that can't take them is dealt with by whoever reads it next.
    static_cast<void>(m_dbHolder->dictionaryDAO().addMultiple(dictionaries.getRight()));
    Q_EMIT finished(true);
}

} // namespace tessaly::dictionary
