#pragma once

#include <QTcpServer>
#include <QTcpSocket>

namespace tessaly::server {

/// A client's connection, which counts the requests that wait for their responses.
class Connection : public QTcpSocket {
    Q_OBJECT

public:
    Connection(qintptr descriptor, QObject* parent);

    /// To be called for every request that is there as a whole, and once it is answered.
    void beginResponse();
    void endResponse() { --m_waiting; }

private:
    int m_waiting = 0; ///< requests that are not answered yet
};

/// Accepts such connections.
class Listener : public QTcpServer {
protected:
    void incomingConnection(qintptr descriptor) override {
        addPendingConnection(new Connection(descriptor, this));
    }
};

} // namespace tessaly::server
