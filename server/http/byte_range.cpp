#include "http/byte_range.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace tessaly::server {

namespace {

/// A number too big for its type means "up to the end" as well as any.
qint64 number(const QString& digits) {
    bool fits = false;
    const qint64 value = digits.toLongLong(&fits);
    return fits ? value : std::numeric_limits<qint64>::max();
}

} // namespace

ByteRange parseByteRange(const QByteArray& header, qint64 size) {
    static const QRegularExpression form(QStringLiteral("^bytes=\\s*([0-9]*)-([0-9]*)\\s*$"),
                                         QRegularExpression::CaseInsensitiveOption);
    const ByteRange whole{ByteRange::Kind::Whole, 0, size};
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(header));
    const QString first = match.captured(1);
    const QString last = match.captured(2);
    if (!match.hasMatch() || (first.isEmpty() && last.isEmpty()))
        return whole;
    if (!first.isEmpty() && !last.isEmpty() && number(last) < number(first))
        return whole;

    const qint64 start = first.isEmpty() ? size - std::min(size, number(last)) : number(first);
    const qint64 end = first.isEmpty() || last.isEmpty() ? size - 1 : std::min(size - 1, number(last));
    if (start > end)
        return {ByteRange::Kind::Unsatisfiable, 0, 0};
    return {ByteRange::Kind::Part, start, end - start + 1};
}

} // namespace tessaly::server
