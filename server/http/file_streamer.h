#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

#include <memory>

class QTcpSocket;

namespace tessaly::server {

/// Sends a stretch of an open file to a socket, holding no more of it in memory than keeps the connection
/// busy. Belongs to the socket and ends with it, or with the last byte.
class FileStreamer : public QObject {
public:
    /// Sends `length` bytes from the file's position; at most `bytesPerSecond` of them a second unless that
    /// is 0.
    FileStreamer(std::unique_ptr<QFile> file, qint64 length, qint64 bytesPerSecond, QTcpSocket* socket);

private:
    void fill();
    qint64 allowance() const;

    std::unique_ptr<QFile> m_file;
    qint64 m_length;
    qint64 m_sent = 0;
    qint64 m_bytesPerSecond;
    QTcpSocket* m_socket;
    QElapsedTimer m_clock;
    QTimer m_throttle;
};

} // namespace tessaly::server
