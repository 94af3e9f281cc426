#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QPair>
#include <QString>

#include <optional>

namespace tessaly::server {

/// What a client makes its request depend on: the ETags it knows, the stretch it wants.
struct Conditions {
    QByteArray ifNoneMatch;
    QByteArray range;
    QByteArray ifRange;
};

/// A stretch of a file, in bytes.
struct FilePart {
    QString path;
    qint64 offset = 0;
    qint64 length = 0;
    qint64 bytesPerSecond = 0; ///< 0: as fast as it goes
};

/// What is sent for a request.
struct Response {
    int status = 200;
    QByteArray contentType;
    QByteArray body;
    std::optional<FilePart> file; ///< in place of a body
    QByteArray tag;               ///< names exactly this content; empty: it can't be asked for in parts
    QList<QPair<QByteArray, QByteArray>> headers; ///< besides those that follow from the above

    static Response json(const QJsonObject& object, int status = 200);
    /// A JSON object whose "error" says what went wrong.
    static Response error(int status, const QString& message);

    qint64 size() const { return file ? file->length : body.size(); }

    /// What is left of a tagged response under the client's conditions: all of it, a part (206), nothing
    /// because the client has it (304) or because there is no such part (416). A range that isn't understood
    /// is overlooked, and so are several in one header.
    Response under(const Conditions& conditions) &&;
};

} // namespace tessaly::server
