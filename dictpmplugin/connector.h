#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

namespace tessaly::dictionary {

class DBHolder;

/// Brings the device online in the background, and stores the server's catalogue once the server responds.
///
///     connect(&connector, &Connector::finished, this, &DataManager::handleConnetingFinished);
///     const int agent = connector.connectToInet();
///     ...
///     connector.setClose(), CloseTask(agent, 0, 1);
///
/// It never replaces what is stored, and it doesn't end the agent. It runs on the thread that owns it; a tick
/// blocks that thread for the length of one request.
class Connector : public QObject {
    Q_OBJECT

public:
    Connector(const std::shared_ptr<DBHolder>& holder, QObject* parent);

    /// One poll. Stops polling when the device is connected. Else asks the server, for 30 ticks at most; each
    /// tick that doesn't find the device connected emits `finished`, and stores the catalogue once more if it
    /// got one.
    void tryConnectToInet();

Q_SIGNALS:
    /// The result of one tick.
    void finished(bool is_ok);

public Q_SLOTS:
    /// Starts the network agent and polls every second. Returns the agent's task identifier, which the
    /// caller ends.
    int connectToInet();
    /// From now on each tick that finds the device offline fails. The polling goes on.
    void setClose();

private:
    std::shared_ptr<DBHolder> m_dbHolder;
    bool m_close = false;
    int m_attempts = 0; ///< ticks that found the device not connected; never reset
    QTimer m_pollTimer;
};

} // namespace tessaly::dictionary
