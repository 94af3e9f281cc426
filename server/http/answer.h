#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QPair>
#include <QString>

#include <optional>

namespace tessaly::server {

/// A stretch of a file, in bytes.
struct FilePart {
    QString path;
    qint64 offset = 0;
    qint64 length = 0;
    qint64 bytesPerSecond = 0; ///< 0: as fast as it goes
};

/// What is sent for a request.
struct Answer {
    int status = 200;
    QByteArray contentType;
    QByteArray body;
    std::optional<FilePart> file;                 ///< in place of a body
    QList<QPair<QByteArray, QByteArray>> headers; ///< besides Content-Type and Content-Length

    static Answer json(const QJsonObject& object, int status = 200);
    static Answer text(const QString& text);
    /// A JSON object whose "error" says what went wrong.
    static Answer error(int status, const QString& message);
};

} // namespace tessaly::server
