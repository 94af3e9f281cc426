#include "reader_text.h"

#include "word.h"

#include <algorithm>
#include <utilities/cfg_wrapper.h>

namespace tessaly::simulator {

namespace {

constexpr auto placeFile = "/mnt/ext1/system/config/reader.cfg";
constexpr auto textKey = "text";
constexpr auto pageKey = "page";

QFont serif(double pixels, bool bold = false) {
    QFont font;
    font.setFamilies({QStringLiteral("Noto Serif"), QStringLiteral("DejaVu Serif")});
    font.setStyleHint(QFont::Serif);
    font.setPixelSize(std::max(1, int(pixels)));
    font.setBold(bold);
    // Letters stand where they were measured, however the picture of the screen is scaled.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace

ReaderText::ReaderText(QObject* parent)
    : QObject(parent)
    , m_pages(1) {
    const utilities::CfgWrapper place(placeFile, 0);
    m_text = std::clamp(place.readIfExists<int>(textKey).value_or(0), 0, int(libraryTexts().size()) - 1);
    m_page = std::max(0, place.readIfExists<int>(pageKey).value_or(0));
}

QVariantList ReaderText::texts() {
    QVariantList list;
    for (const LibraryText& text : libraryTexts())
        list << QVariantMap{{QStringLiteral("title"), text.title}, {QStringLiteral("author"), text.author}};
    return list;
}

QString ReaderText::title() const {
    return libraryTexts()[std::size_t(m_text)].title;
}

void ReaderText::setArea(QSizeF area) {
    if (area == m_style.area)
        return;
    m_style.area = area;
    Q_EMIT styleChanged();
    layOutAgain();
}

void ReaderText::setLetterSize(int pixels) {
    if (pixels == m_letterSize)
        return;
    m_letterSize = pixels;
    m_style.body = serif(pixels);
    m_style.title = serif(pixels * 1.4, true);
    m_style.author = serif(pixels * 0.85);
    Q_EMIT styleChanged();
    layOutAgain();
}

/// The page's number stays as far as there is one: the place that was kept is older than the first layout.
void ReaderText::layOutAgain() {
    if (m_letterSize <= 0 || m_style.area.isEmpty())
        return;
    m_pages = layOut(libraryTexts()[std::size_t(m_text)], m_style);
    m_page = std::min(m_page, pageCount() - 1);
    Q_EMIT pageChanged();
}

const QFont& ReaderText::fontOf(PlacedWord::Kind kind) const {
    switch (kind) {
    case PlacedWord::Kind::Title:
        return m_style.title;
    case PlacedWord::Kind::Author:
        return m_style.author;
    case PlacedWord::Kind::Body:
        break;
    }
    return m_style.body;
}

QVariantList ReaderText::words() const {
    QVariantList list;
    if (m_page >= pageCount())
        return list;
    for (const PlacedWord& word : currentPage()) {
        list << QVariantMap{{QStringLiteral("text"), word.text},
                            {QStringLiteral("x"), word.place.x()},
                            {QStringLiteral("y"), word.place.y()},
                            {QStringLiteral("width"), word.place.width()},
                            {QStringLiteral("height"), word.place.height()},
                            {QStringLiteral("font"), fontOf(word.kind)},
                            {QStringLiteral("canLookUp"), !bareWord(word.text).isEmpty()}};
    }
    return list;
}

void ReaderText::open(int text) {
    m_text = std::clamp(text, 0, int(libraryTexts().size()) - 1);
    m_page = 0;
    keepPlace();
    Q_EMIT textChanged();
    layOutAgain();
}

bool ReaderText::turn(int direction) {
    const int page = m_page + direction;
    if (page < 0 || page >= pageCount())
        return false;
    m_page = page;
    keepPlace();
    Q_EMIT pageChanged();
    return true;
}

int ReaderText::wordInNextLine(int word, int direction) const {
    return m_page < pageCount() ? simulator::wordInNextLine(currentPage(), word, direction) : -1;
}

void ReaderText::keepPlace() const {
    utilities::CfgWrapper place(placeFile, 1);
    WriteInt(place.handle(), textKey, m_text);
    WriteInt(place.handle(), pageKey, m_page);
    place.saveAndClose();
}

} // namespace tessaly::simulator
