#pragma once

#include <QString>

namespace tessaly::dictionary {

// What a screen can bear of a text from elsewhere, in characters.
constexpr qsizetype longestText = 300;
constexpr qsizetype longestDescription = 4000;
constexpr qsizetype longestUrl = 2000;

/// At most so many characters, the last of which says that there were more.
inline QString cut(QString text, qsizetype longest) {
    if (text.size() <= longest)
        return text;
    text.truncate(longest - 1);
    if (text.back().isHighSurrogate())
        text.chop(1);
    return text + QChar(0x2026);
}

} // namespace tessaly::dictionary
