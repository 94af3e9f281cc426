#include "http/listener.h"

namespace tessaly::server {

namespace {

// Who sends requests without waiting for responses is stopped at this many.
constexpr int waitingMaximum = 100;

} // namespace

Connection::Connection(qintptr descriptor, QObject* parent)
    : QTcpSocket(parent) {
    setSocketDescriptor(descriptor);
}

void Connection::beginResponse() {
    if (++m_waiting > waitingMaximum)
        abort();
}

} // namespace tessaly::server
