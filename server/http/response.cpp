#include "http/response.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace tessaly::server {

namespace {

bool isKnown(const QByteArray& tag, const QByteArray& ifNoneMatch) {
    const QList<QByteArray> known = ifNoneMatch.split(',');
    return std::any_of(known.begin(), known.end(), [&tag](QByteArray one) {
        one = one.trimmed();
        return (one.startsWith("W/") ? one.sliced(2) : one) == tag || one == "*";
    });
}

/// A number too big for its type means "up to the end" as well as any.
qint64 parseOffset(const QString& digits) {
    bool fits = false;
    const qint64 value = digits.toLongLong(&fits);
    return fits ? value : std::numeric_limits<qint64>::max();
}

/// First byte and length of the part of `size` bytes that a Range header asks for; a length of 0 if there is
/// nothing of it, no value if all is to be sent.
std::optional<std::pair<qint64, qint64>> parseRange(const QByteArray& header, qint64 size) {
    static const QRegularExpression form(QStringLiteral("^bytes=\\s*([0-9]*)-([0-9]*)\\s*$"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(header));
    const QString first = match.captured(1);
    const QString last = match.captured(2);
    if (!match.hasMatch() || (first.isEmpty() && last.isEmpty()))
        return std::nullopt;
    if (first.isEmpty()) {
        const qint64 length = std::min(size, parseOffset(last));
        return std::pair(size - length, length);
    }
    const qint64 start = parseOffset(first);
    const qint64 end = last.isEmpty() ? size - 1 : parseOffset(last);
    if (!last.isEmpty() && end < start)
        return std::nullopt;
    return std::pair(start, std::max<qint64>(0, std::min(size - 1, end) - start + 1));
}

} // namespace

Response Response::json(const QJsonObject& object, int status) {
    Response response;
    response.status = status;
    response.contentType = "application/json";
    response.body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return response;
}

Response Response::error(int status, const QString& message) {
    return json({{QStringLiteral("error"), message}}, status);
}

Response Response::under(const Conditions& conditions) && {
    if (tag.isEmpty() || status != 200)
        return std::move(*this);
    headers << qMakePair(QByteArray("ETag"), tag) << qMakePair(QByteArray("Accept-Ranges"), "bytes");
    // A client that has part of another content is to get the whole of this one.
    const bool isSame = conditions.ifRange.isEmpty() || conditions.ifRange == tag;
    const auto range = parseRange(isSame ? conditions.range : QByteArray(), size());
    const QByteArray total = '/' + QByteArray::number(size());
    if (isKnown(tag, conditions.ifNoneMatch)) {
        status = 304;
    } else if (range && range->second == 0) {
        status = 416;
        headers << qMakePair(QByteArray("Content-Range"), "bytes *" + total);
    } else if (range) {
        status = 206;
        const auto [start, length] = *range;
        headers << qMakePair(QByteArray("Content-Range"), "bytes " + QByteArray::number(start) + '-' +
                                                              QByteArray::number(start + length - 1) + total);
        if (file)
            file = FilePart{file->path, file->offset + start, length, file->bytesPerSecond};
        else
            body = body.mid(start, length);
    }
    if (status == 304 || status == 416) {
        contentType.clear();
        body.clear();
        file.reset();
    }
    return std::move(*this);
}

} // namespace tessaly::server
