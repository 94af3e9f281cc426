import QtQuick
import com.tessaly.controls
import Tessaly.Simulator

// A book's page: words to look up, pages to turn, other texts and dictionaries to choose.
FocusScope {
    id: reader

    signal dictionariesWanted()

    function lookUp(word: int) {
        page.mark(word)
        wordLookup.lookUp(page.wordText(word))
        entry.atTop = page.wordRect(word).y + page.y > reader.height / 2
        entry.show()
    }

    function closeEntry() {
        entry.visible = false
        if (DeviceInfoProvider.touch)
            page.mark(-1)
        page.forceActiveFocus()
    }

    function leaveForDictionaries() {
        closeEntry()
        dictionariesWanted()
    }

    ReaderText {
        id: book
    }
    WordLookup {
        id: wordLookup
    }

    ReaderHeader {
        id: header
        anchors.top: parent.top
        width: parent.width
        title: book.title
        onTextsWanted: chooser.show()
        onDictionariesWanted: reader.leaveForDictionaries()
        onLeftDownwards: page.forceActiveFocus()
    }
    PageView {
        id: page
        focus: true
        anchors.top: header.bottom
        anchors.bottom: footer.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.topMargin: Global.mm(5)
        anchors.bottomMargin: Global.mm(2)
        anchors.leftMargin: Global.mm(8)
        anchors.rightMargin: Global.mm(8)
        text: book
        showsMark: activeFocus || entry.visible // one thing looks focused at a time
        letterSize: Math.round(12 * DeviceInfoProvider.dpi / 72)
        shownTop: entry.visible && entry.atTop ? entry.height - y : 0
        shownBottom: entry.visible && !entry.atTop ? entry.y - y : height
        onWordChosen: word => reader.lookUp(word)
        onLeftUpwards: header.forceActiveFocus()
    }
    ReaderFooter {
        id: footer
        anchors.bottom: parent.bottom
        width: parent.width
        dictionary: wordLookup.dictionary
        page: page.page
        pageCount: page.pageTops.length
        onTurned: direction => page.turn(direction)
    }
    EntryPanel {
        id: entry
        property bool atTop: false
        visible: false
        width: parent.width
        y: atTop ? 0 : parent.height - height
        maximumHeight: parent.height * 0.5
        lookup: wordLookup
        onClosed: reader.closeEntry()
        onDictionariesWanted: reader.leaveForDictionaries()
    }
    TextChooser {
        id: chooser
        anchors.fill: parent
        visible: false
        text: book
        onClosed: {
            visible = false
            page.forceActiveFocus()
        }
    }
}
