#include "page_layout.h"

#include <QFontMetricsF>
#include <cmath>

namespace tessaly::simulator {

namespace {

constexpr double indentEms = 1.2; ///< of a paragraph's first line
constexpr double titleGapEms = 1; ///< beneath title and author

class Typesetter {
public:
    explicit Typesetter(QSizeF area)
        : m_area(area)
        , m_pages(1) {}

    void set(const QString& paragraph, const QFont& font, PlacedWord::Kind kind, double indent) {
        const QFontMetricsF metrics(font);
        const double lineHeight = std::ceil(metrics.height());
        const double blank = metrics.horizontalAdvance(u' ');
        double x = indent;
        beginLine(lineHeight);
        for (const QString& text : paragraph.split(u' ', Qt::SkipEmptyParts)) {
            const double width = metrics.horizontalAdvance(text);
            if (x > 0 && x + width > m_area.width()) {
                m_y += lineHeight;
                x = 0;
                beginLine(lineHeight);
            }
            m_pages.back().push_back({text, {x, m_y, width, lineHeight}, kind});
            x += width + blank;
        }
        m_y += lineHeight;
    }

    void skip(double height) { m_y += height; }
    std::vector<Page> takePages() { return std::move(m_pages); }

private:
    void beginLine(double height) {
        if (m_y + height <= m_area.height() || m_pages.back().empty())
            return;
        m_pages.emplace_back();
        m_y = 0;
    }

    const QSizeF m_area;
    std::vector<Page> m_pages;
    double m_y = 0;
};

} // namespace

std::vector<Page> layOut(const LibraryText& text, const PageStyle& style) {
    Typesetter typesetter(style.area);
    const double em = style.body.pixelSize();
    typesetter.set(text.title, style.title, PlacedWord::Kind::Title, 0);
    typesetter.set(text.author, style.author, PlacedWord::Kind::Author, 0);
    typesetter.skip(em * titleGapEms);
    for (qsizetype i = 0; i < text.paragraphs.size(); ++i)
        typesetter.set(text.paragraphs[i], style.body, PlacedWord::Kind::Body, i == 0 ? 0 : em * indentEms);
    return typesetter.takePages();
}

int wordInNextLine(const Page& page, int word, int direction) {
    if (word < 0 || word >= int(page.size()))
        return -1;
    const QRectF from = page[std::size_t(word)].place;
    int nearest = -1;
    double line = 0;
    double distance = 0;
    for (int i = word + direction; i >= 0 && i < int(page.size()); i += direction) {
        const QRectF place = page[std::size_t(i)].place;
        if (place.top() == from.top())
            continue;
        if (nearest >= 0 && place.top() != line)
            break;
        const double away = std::abs(place.center().x() - from.center().x());
        if (nearest < 0 || away < distance) {
            nearest = i;
            distance = away;
        }
        line = place.top();
    }
    return nearest;
}

} // namespace tessaly::simulator
