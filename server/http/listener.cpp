#include "http/listener.h"

namespace tessaly::server {

namespace {

constexpr qint64 requestMaximum = 65536;
// Who sends requests without waiting for responses is stopped at this many.
constexpr int waitingMaximum = 100;

} // namespace

Connection::Connection(qintptr descriptor, QObject* parent)
    : QTcpSocket(parent) {
    // Before QHttpServer connects to the same signal, so that it never sees what is too much.
    connect(this, &QTcpSocket::readyRead, this, &Connection::measure);
    setReadBufferSize(requestMaximum);
    setSocketDescriptor(descriptor);
}

void Connection::beginResponse() {
    m_received = 0;
    if (++m_waiting > waitingMaximum)
        abort();
}

void Connection::measure() {
    m_received += bytesAvailable();
    if (m_received < requestMaximum)
        return;
    if (m_waiting > 0) // a response that is under way can't be told from this one
        return abort();
    readAll();
    write("HTTP/1.1 413 Payload Too Large\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    disconnectFromHost();
}

} // namespace tessaly::server
