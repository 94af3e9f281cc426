#include "http/exchange.h"

#include "http/listener.h"

#include <QBuffer>
#include <QFile>
#include <QHttpServerRequest>

#include <algorithm>

namespace tessaly::server {

namespace {

constexpr qint64 pieceSize = 262144;
constexpr qint64 waitingMaximum = 2 * pieceSize;
constexpr int throttleMilliseconds = 20;

std::unique_ptr<QIODevice> open(const Response& response) {
    if (response.file) {
        auto file = std::make_unique<QFile>(response.file->path);
        if (file->open(QIODevice::ReadOnly | QIODevice::Unbuffered) && file->seek(response.file->offset))
            return file;
        return nullptr;
    }
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(response.body);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

} // namespace

Exchange::Exchange(const QHttpServerRequest& request, QHttpServerResponder&& responder, int delayMs)
    : QObject(responder.socket())
    , m_responder(std::move(responder))
    , m_connection(static_cast<Connection&>(*m_responder.socket()))
    , m_conditions{request.value("If-None-Match"), request.value("Range"), request.value("If-Range")}
    , m_headersOnly(request.method() == QHttpServerRequest::Method::Head)
    , m_delayMs(delayMs) {
    connect(&m_throttle, &QTimer::timeout, this, &Exchange::fill);
    m_connection.beginResponse();
}

void Exchange::send(const Response& response) {
    const auto release = [this, response] {
        m_response = response;
        startFirst(m_connection);
    };
    if (m_delayMs > 0)
        QTimer::singleShot(m_delayMs, this, release);
    else
        release();
}

void Exchange::startFirst(Connection& connection) {
    auto* const first = connection.findChild<Exchange*>(QString(), Qt::FindDirectChildrenOnly);
    if (first != nullptr && first->m_response && first->m_content == nullptr)
        first->start();
}

void Exchange::start() {
    if (m_connection.state() != QAbstractSocket::ConnectedState)
        return;
    Response response = std::move(*m_response).under(m_conditions);
    m_content = open(response);
    if (m_content == nullptr) {
        response = Response::error(500, QStringLiteral("the file can't be read"));
        m_content = open(response);
    }
    writeHeaders(response);
    m_length = m_headersOnly ? 0 : response.size();
    m_clock.start();
    if (response.file && response.file->bytesPerSecond > 0) {
        m_bytesPerSecond = response.file->bytesPerSecond;
        m_throttle.start(throttleMilliseconds);
    } else {
        connect(&m_connection, &QTcpSocket::bytesWritten, this, &Exchange::fill);
    }
    fill();
}

void Exchange::writeHeaders(const Response& response) {
    m_responder.writeStatusLine(static_cast<QHttpServerResponder::StatusCode>(response.status));
    if (!response.contentType.isEmpty())
        m_responder.writeHeader("Content-Type", response.contentType);
    for (const auto& [name, value] : response.headers)
        m_responder.writeHeader(name, value);
    // These two have no body by their definition, and no length then.
    if (response.status != 204 && response.status != 304)
        m_responder.writeHeader("Content-Length", QByteArray::number(response.size()));
    m_responder.writeBody(QByteArray());
}

void Exchange::fill() {
    while (m_sent < m_length && m_connection.bytesToWrite() < waitingMaximum) {
        const qint64 wanted = std::min({pieceSize, m_length - m_sent, allowance()});
        if (wanted <= 0)
            return;
        const QByteArray piece = m_content->read(wanted);
        if (piece.isEmpty() || m_connection.write(piece) != piece.size()) {
            // The length is announced already: a broken connection is the only way left to say so.
            m_connection.abort();
            return;
        }
        m_sent += piece.size();
    }
    if (m_sent < m_length)
        return;
    m_throttle.stop();
    m_connection.endResponse();
    disconnect(&m_connection, nullptr, this, nullptr);
    setParent(nullptr);
    deleteLater();
    startFirst(m_connection);
}

qint64 Exchange::allowance() const {
    if (m_bytesPerSecond == 0)
        return m_length;
    return m_clock.elapsed() * m_bytesPerSecond / 1000 - m_sent;
}

} // namespace tessaly::server
