#pragma once

#include <QTcpServer>
#include <QTcpSocket>

namespace tessaly::server {

/// A client's connection, which takes no request over 64 KiB, headers and all, where QHttpServer would keep
/// any in memory: the client gets status 413 and the connection is closed.
class Connection : public QTcpSocket {
    Q_OBJECT

public:
    Connection(qintptr descriptor, QObject* parent);

    /// To be called for every request that is there as a whole, and once it is answered.
    void beginResponse();
    void endResponse() { --m_waiting; }

private:
    void measure();

    qint64 m_received = 0; ///< since the last whole request
    int m_waiting = 0;     ///< requests that are not answered yet
};

/// Accepts such connections.
class Listener : public QTcpServer {
protected:
    void incomingConnection(qintptr descriptor) override {
        addPendingConnection(new Connection(descriptor, this));
    }
};

} // namespace tessaly::server
