#pragma once

#include <QByteArray>

namespace tessaly::server {

/// The part of a content that a Range header asks for, in bytes.
struct ByteRange {
    enum class Kind {
        Whole,        ///< no range, or one that is not understood and so to be overlooked
        Part,         ///< what offset and length say, at least one byte
        Unsatisfiable ///< nothing of it is in the content
    };

    Kind kind = Kind::Whole;
    qint64 offset = 0;
    qint64 length = 0;
};

/// `header` is the value of "Range", empty if there is none; `size` is the content's. Of several ranges in
/// one header none is served: the answer is then the whole.
ByteRange parseByteRange(const QByteArray& header, qint64 size);

} // namespace tessaly::server
