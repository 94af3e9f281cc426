#pragma once

#include "page_layout.h"

#include <QFont>
#include <QObject>
#include <QSizeF>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tessaly::simulator {

/// The text that the reader shows, page by page, and where in it the user is. The device keeps that place.
/// GUI thread.
class ReaderText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// All texts: objects with `title` and `author`.
    Q_PROPERTY(QVariantList texts READ texts CONSTANT)
    Q_PROPERTY(int text READ text NOTIFY textChanged)                        ///< number of the open one
    Q_PROPERTY(QString title READ title NOTIFY textChanged)                  ///< its title
    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY styleChanged)    ///< of a page, in pixels
    Q_PROPERTY(qreal height READ height WRITE setHeight NOTIFY styleChanged) ///< of a page, in pixels
    Q_PROPERTY(int letterSize READ letterSize WRITE setLetterSize NOTIFY styleChanged) ///< pixels
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageChanged)
    Q_PROPERTY(int page READ page NOTIFY pageChanged) ///< from 0
    /// Of the page: objects with `text`, `x`, `y`, `width`, `height`, `font` and `canLookUp`: whether it is
    /// more than punctuation.
    Q_PROPERTY(QVariantList words READ words NOTIFY pageChanged)

public:
    explicit ReaderText(QObject* parent = nullptr);

    [[nodiscard]] static QVariantList texts();
    [[nodiscard]] int text() const { return m_text; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] qreal width() const { return m_style.area.width(); }
    void setWidth(qreal width) { setArea({width, height()}); }
    [[nodiscard]] qreal height() const { return m_style.area.height(); }
    void setHeight(qreal height) { setArea({width(), height}); }
    void setArea(QSizeF area);
    [[nodiscard]] int letterSize() const { return m_letterSize; }
    void setLetterSize(int pixels);
    [[nodiscard]] int pageCount() const { return int(m_pages.size()); }
    [[nodiscard]] int page() const { return m_page; }
    [[nodiscard]] QVariantList words() const;

    /// Opens a text at its first page.
    Q_INVOKABLE void open(int text);
    /// 1 is the next page, -1 the one before; false at the end.
    Q_INVOKABLE bool turn(int direction);
    /// Number of the word in the line below (1) or above (-1), or -1.
    Q_INVOKABLE int wordInNextLine(int word, int direction) const;

Q_SIGNALS:
    void textChanged();
    void styleChanged();
    void pageChanged();

private:
    void layOutAgain();
    void keepPlace() const;
    [[nodiscard]] const Page& currentPage() const { return m_pages[std::size_t(m_page)]; }
    [[nodiscard]] const QFont& fontOf(PlacedWord::Kind kind) const;

    int m_text = 0;
    int m_page = 0;
    int m_letterSize = 0;
    PageStyle m_style;
    std::vector<Page> m_pages; ///< never empty
};

} // namespace tessaly::simulator
