#include "http/file_streamer.h"

#include <QTcpSocket>

#include <algorithm>

namespace tessaly::server {

namespace {

constexpr qint64 pieceSize = 262144;
constexpr qint64 waitingMaximum = 2 * pieceSize;
constexpr int throttleMilliseconds = 20;

} // namespace

FileStreamer::FileStreamer(std::unique_ptr<QFile> file, qint64 length, qint64 bytesPerSecond,
                           QTcpSocket* socket)
    : QObject(socket)
    , m_file(std::move(file))
    , m_length(length)
    , m_bytesPerSecond(bytesPerSecond)
    , m_socket(socket) {
    m_clock.start();
    if (m_bytesPerSecond > 0) {
        connect(&m_throttle, &QTimer::timeout, this, &FileStreamer::fill);
        m_throttle.start(throttleMilliseconds);
    } else {
        connect(m_socket, &QTcpSocket::bytesWritten, this, &FileStreamer::fill);
    }
    fill();
}

void FileStreamer::fill() {
    while (m_sent < m_length && m_socket->bytesToWrite() < waitingMaximum) {
        const qint64 wanted = std::min({pieceSize, m_length - m_sent, allowance()});
        if (wanted <= 0)
            return;
        const QByteArray piece = m_file->read(wanted);
        if (piece.isEmpty() || m_socket->write(piece) != piece.size()) {
            // The length is announced already: a broken connection is the only way left to say so.
            m_socket->abort();
            return;
        }
        m_sent += piece.size();
    }
    if (m_sent == m_length)
        deleteLater();
}

qint64 FileStreamer::allowance() const {
    if (m_bytesPerSecond == 0)
        return m_length;
    return m_clock.elapsed() * m_bytesPerSecond / 1000 - m_sent;
}

} // namespace tessaly::server
