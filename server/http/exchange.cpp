#include "http/exchange.h"

#include "http/file_streamer.h"

#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

namespace tessaly::server {

struct Exchange::Pending {
    QHttpServerResponder responder;
    QPointer<QTcpSocket> socket;
    bool headersOnly;
    int delayMs;
};

Exchange::Exchange(const QHttpServerRequest& request, QHttpServerResponder&& responder, int delayMs) {
    const QPointer<QTcpSocket> socket = responder.socket();
    m_pending = std::make_shared<Pending>(
        Pending{std::move(responder), socket, request.method() == QHttpServerRequest::Method::Head, delayMs});
}

void Exchange::send(const Answer& answer) const {
    QTcpSocket* socket = m_pending->socket;
    if (socket == nullptr)
        return;
    if (m_pending->delayMs > 0)
        QTimer::singleShot(m_pending->delayMs, socket,
                           [pending = m_pending, answer] { write(*pending, answer); });
    else
        write(*m_pending, answer);
}

void Exchange::write(Pending& pending, Answer answer) {
    if (pending.socket == nullptr || pending.socket->state() != QAbstractSocket::ConnectedState)
        return;
    std::unique_ptr<QFile> file;
    if (answer.file) {
        file = std::make_unique<QFile>(answer.file->path);
        if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !file->seek(answer.file->offset))
            answer = Answer::error(500, QStringLiteral("the file can't be read"));
    }
    const qint64 length = answer.file ? answer.file->length : answer.body.size();
    QHttpServerResponder& responder = pending.responder;
    responder.writeStatusLine(static_cast<QHttpServerResponder::StatusCode>(answer.status));
    if (!answer.contentType.isEmpty())
        responder.writeHeader("Content-Type", answer.contentType);
    for (const auto& [name, value] : answer.headers)
        responder.writeHeader(name, value);
    // These two have no body by their definition, and no length then.
    if (answer.status != 204 && answer.status != 304)
        responder.writeHeader("Content-Length", QByteArray::number(length));
    responder.writeBody(pending.headersOnly || answer.file ? QByteArray() : answer.body);
    if (answer.file && !pending.headersOnly)
        new FileStreamer(std::move(file), length, answer.file->bytesPerSecond, pending.socket);
}

} // namespace tessaly::server
