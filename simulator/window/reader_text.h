#pragma once

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tessaly::simulator {

/// The text that the reader shows, and where in it the user is. The device keeps that place. GUI thread.
class ReaderText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// All texts: objects with `title` and `author`.
    Q_PROPERTY(QVariantList texts READ texts CONSTANT)
    Q_PROPERTY(int text READ text NOTIFY textChanged)       ///< number of the open one
    Q_PROPERTY(QString title READ title NOTIFY textChanged) ///< its title
    Q_PROPERTY(
        int page READ page WRITE setPage NOTIFY pageChanged) ///< from 0; whoever sets the text counts them

public:
    explicit ReaderText(QObject* parent = nullptr);

    [[nodiscard]] static QVariantList texts();
    [[nodiscard]] int text() const { return m_text; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] int page() const { return m_page; }
    void setPage(int page);

    /// Opens a text at its first page.
    Q_INVOKABLE void open(int text);
    /// The open text for a TextEdit, in letters of this size (pixels).
    Q_INVOKABLE [[nodiscard]] QString richText(int letterSize) const;

Q_SIGNALS:
    void textChanged();
    void pageChanged();

private:
    void keepPlace() const;

    int m_text = 0;
    int m_page = 0;
};

} // namespace tessaly::simulator
