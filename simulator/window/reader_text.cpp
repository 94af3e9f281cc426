#include "reader_text.h"

#include <QFile>
#include <algorithm>
#include <utilities/cfg_wrapper.h>
#include <vector>

namespace tessaly::simulator {

namespace {

constexpr auto placeFile = "/mnt/ext1/system/config/reader.cfg";
constexpr auto textKey = "text";
constexpr auto pageKey = "page";

struct Piece {
    QString title;
    QString author;
    QStringList paragraphs;
};

/// The texts on the simulated device, an empty line between two.
const std::vector<Piece>& library() {
    static const std::vector<Piece> pieces = [] {
        QFile file(QStringLiteral(":/Tessaly/Simulator/texts.txt"));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("the program lacks its texts");
        std::vector<Piece> all;
        for (const QString& text : QString::fromUtf8(file.readAll()).split(QStringLiteral("\n\n"))) {
            const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
            all.push_back({lines.at(0), lines.at(1), lines.mid(2)});
        }
        return all;
    }();
    return pieces;
}

QString paragraph(const QString& text, double letterSize, const QString& style) {
    return QStringLiteral("<p style='margin:0; font-size:%1px; %2'>%3</p>")
        .arg(int(letterSize))
        .arg(style, text.toHtmlEscaped());
}

} // namespace

ReaderText::ReaderText(QObject* parent)
    : QObject(parent) {
    const utilities::CfgWrapper place(placeFile, 0);
    m_text = std::clamp(place.readIfExists<int>(textKey).value_or(0), 0, int(library().size()) - 1);
    m_page = std::max(0, place.readIfExists<int>(pageKey).value_or(0));
}

QVariantList ReaderText::texts() {
    QVariantList list;
    for (const Piece& piece : library())
        list << QVariantMap{{QStringLiteral("title"), piece.title}, {QStringLiteral("author"), piece.author}};
    return list;
}

QString ReaderText::title() const {
    return library()[std::size_t(m_text)].title;
}

QString ReaderText::richText(int letterSize) const {
    const Piece& piece = library()[std::size_t(m_text)];
    QString html = paragraph(piece.title, letterSize * 1.4, QStringLiteral("font-weight:bold"));
    html += paragraph(piece.author, letterSize * 0.85, QStringLiteral("margin-bottom:%1px").arg(letterSize));
    for (const QString& text : piece.paragraphs) {
        const int indent = text == piece.paragraphs.constFirst() ? 0 : letterSize * 6 / 5;
        html += paragraph(text, letterSize, QStringLiteral("text-indent:%1px").arg(indent));
    }
    return html;
}

void ReaderText::open(int text) {
    m_text = std::clamp(text, 0, int(library().size()) - 1);
    m_page = 0;
    keepPlace();
    Q_EMIT textChanged();
    Q_EMIT pageChanged();
}

void ReaderText::setPage(int page) {
    if (page == m_page)
        return;
    m_page = page;
    keepPlace();
    Q_EMIT pageChanged();
}

void ReaderText::keepPlace() const {
    utilities::CfgWrapper place(placeFile, 1);
    WriteInt(place.handle(), textKey, m_text);
    WriteInt(place.handle(), pageKey, m_page);
    place.saveAndClose();
}

} // namespace tessaly::simulator
