#pragma once

#include "http/response.h"

#include <QElapsedTimer>
#include <QHttpServerResponder>
#include <QTimer>

#include <memory>

class QIODevice;

namespace tessaly::server {

class Connection;

/// A request that waits for its response, now or later, and the sending of it. Belongs to the connection and
/// ends with it, or with the last byte: hold it by a QPointer. Responses leave in the order of the requests,
/// and no more of one is held in memory than keeps the connection busy. For the server's thread.
class Exchange : public QObject {
    Q_OBJECT

public:
    /// The response will wait for another `delayMs` before it is sent.
    Exchange(const QHttpServerRequest& request, QHttpServerResponder&& responder, int delayMs);

    /// To be called once.
    void send(const Response& response);

private:
    static void startFirst(Connection& connection);

    void start();
    void writeHeaders(const Response& response);
    void fill();
    qint64 allowance() const;

    QHttpServerResponder m_responder;
    Connection& m_connection;
    const Conditions m_conditions;
    const bool m_headersOnly;
    const int m_delayMs;
    std::optional<Response> m_response; ///< once it is to be sent
    std::unique_ptr<QIODevice> m_content;
    qint64 m_length = 0;
    qint64 m_sent = 0;
    qint64 m_bytesPerSecond = 0;
    QElapsedTimer m_clock;
    QTimer m_throttle;
};

} // namespace tessaly::server
