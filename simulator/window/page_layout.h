#pragma once

#include "text_library.h"

#include <QFont>
#include <QRectF>
#include <QSizeF>
#include <vector>

namespace tessaly::simulator {

/// A word in its place on a page, with what stands around it in the text.
struct PlacedWord {
    enum class Kind { Title, Author, Body };
    QString text;
    QRectF place; ///< pixels; as high as its line
    Kind kind = Kind::Body;
};

using Page = std::vector<PlacedWord>;

/// What a text is set in.
struct PageStyle {
    QSizeF area; ///< pixels
    QFont body;
    QFont title;
    QFont author;
};

/// Sets a text in pages, each line as full as it goes. At least one page. A word wider than the area has a
/// line of its own.
std::vector<Page> layOut(const LibraryText& text, const PageStyle& style);

/// The word a line above (direction -1) or below (1) that stands nearest to this one, or -1.
int wordInNextLine(const Page& page, int word, int direction);

} // namespace tessaly::simulator
