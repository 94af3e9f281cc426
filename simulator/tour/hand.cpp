#include "hand.h"

#include "step_log.h"

namespace tessaly::tour {

void Hand::use(const QString& text, Qt::Key towards) const {
    if (m_touch) {
        m_screen.tap(text);
        return;
    }
    m_screen.moveTo(text, towards);
    m_screen.press(Qt::Key_Return);
}

void Hand::openDictionaries() const {
    use(text("@ReaderDictionaries"), Qt::Key_Up);
    m_screen.waitFor(text("@SelectDictionary"));
}

void Hand::askForMore() const {
    use(text("@AddNewDictionaries"), Qt::Key_Up);
}

void Hand::enterDownloadMode() const {
    askForMore();
    m_screen.waitFor(text("@SelectDictionariesToDownload"));
}

QStringList Hand::titles() const {
    const QAbstractItemModel& list = m_screen.list();
    const QHash<int, QByteArray> roles = list.roleNames();
    const QStringList wellFilled{QStringLiteral("fr"), QStringLiteral("es"), QStringLiteral("it"),
                                 QStringLiteral("ru")};
    QStringList titles;
    for (int row = 0; row < list.rowCount(); ++row) {
        const auto value = [&](const char* role) {
            return list.index(row, 0).data(roles.key(role)).toString();
        };
        if (value("languageIsoFrom") == u"en" && wellFilled.contains(value("languageIsoTo")))
            titles.prepend(value("displayTitle"));
        else
            titles.append(value("displayTitle"));
    }
    return titles;
}

QStringList Hand::mark(int count) const {
    QStringList titles = this->titles().mid(0, count);
    require(titles.size() == count, QStringLiteral("only %1 left to download").arg(titles.size()));
    for (const QString& title : qAsConst(titles))
        choose(title);
    m_screen.waitFor(QStringLiteral("%1 (%2)").arg(text("@Download")).arg(count));
    return titles;
}

void Hand::startDownload() const {
    const QString count = m_screen.list().property("selectedCount").toString();
    use(QStringLiteral("%1 (%2)").arg(text("@Download"), count), Qt::Key_Down);
}

void Hand::press(const QString& text) const {
    if (m_touch) {
        m_screen.tap(text);
        return;
    }
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Down, Qt::Key_Up}) {
        if (m_screen.focused().compare(text, Qt::CaseInsensitive) == 0)
            break;
        m_screen.press(key);
    }
    require(m_screen.focused().compare(text, Qt::CaseInsensitive) == 0,
            QStringLiteral("the focus is on \"%1\", not on \"%2\"").arg(m_screen.focused(), text));
    m_screen.press(Qt::Key_Return);
}

void Hand::acknowledge(const QString& message) const {
    if (m_touch)
        m_screen.tap(message);
    else
        m_screen.press(Qt::Key_Return);
}

void Hand::moveToRow(const QString& title) const {
    if (m_screen.focused() == text("@Info")) // the column that was used last
        m_screen.press(Qt::Key_Left);
    m_screen.moveTo(title, Qt::Key_Down);
}

void Hand::choose(const QString& title) const {
    if (m_touch) {
        m_screen.scrollTo(title);
        m_screen.tap(title);
    } else {
        moveToRow(title);
        m_screen.press(Qt::Key_Return);
    }
}

void Hand::openInformation(const QString& title) const {
    if (m_touch) {
        m_screen.scrollTo(title);
        m_screen.tapBeside(title, text("@Info"));
        return;
    }
    moveToRow(title);
    m_screen.press(Qt::Key_Right);
    m_screen.press(Qt::Key_Return);
}

void Hand::pressAbove(const QString& title, const QString& text) const {
    if (m_touch) {
        m_screen.scrollTo(title);
        m_screen.tapAbove(title, text);
    } else {
        moveToRow(title);
        use(text, Qt::Key_Up);
    }
}

void Hand::waitForPage() const {
    waitUntil([this] { return isAtPage(); }, QStringLiteral("the page"));
}

bool Hand::isAtPage() const {
    return !m_screen.shows(text("@SelectDictionary")) && m_screen.shows(text("@ReaderDictionaries"));
}

void Hand::leave() const {
    constexpr int patience = 6;
    for (int i = 0; i < patience && !isAtPage(); ++i)
        m_screen.press(Qt::Key_Back);
    require(isAtPage(), QStringLiteral("Back doesn't lead out"));
}

} // namespace tessaly::tour
