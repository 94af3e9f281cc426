import QtQuick
import com.tessaly.controls
import Tessaly.Simulator

// A page of the text. A finger chooses a word, or turns the page at the margins and by a stroke; with keys one steps
// from word to word.
FocusScope {
    id: view

    property ReaderText text
    property int letterSize: 12
    readonly property string content: text.text >= 0 ? text.richText(letterSize) : ""
    // Where each page begins in the text, in pixels.
    property var pageTops: [0]
    readonly property int page: Math.min(text.page, pageTops.length - 1)
    readonly property real pageTop: pageTops[page]
    readonly property real pageBottom: page + 1 < pageTops.length ? pageTops[page + 1] : body.contentHeight
    // The whole text's words, as pairs of positions in it.
    property var words: []
    // The word that is marked, or -1.
    property int selected: -1
    readonly property bool touch: DeviceInfoProvider.touch

    // Whether the mark is to be seen.
    property bool showsMark: true
    // Lines are shown between these heights; one that would be cut through isn't.
    property real shownTop: 0
    property real shownBottom: height

    signal wordChosen(int word)
    signal leftUpwards()

    function wordText(word: int): string {
        return body.getText(words[word][0], words[word][1])
    }

    // On the page.
    function wordRect(word: int): rect {
        const first = body.positionToRectangle(words[word][0])
        return Qt.rect(first.x, first.y - pageTop, body.positionToRectangle(words[word][1]).x - first.x, first.height)
    }

    function isOnPage(word: int): bool {
        if (word < 0 || word >= words.length)
            return false
        const y = wordRect(word).y
        return y >= 0 && y < pageBottom - pageTop
    }

    function findWords() {
        const found = []
        const text = body.getText(0, body.length)
        const piece = /\S+/g
        for (let match; (match = piece.exec(text)) !== null;) {
            const word = match[0]
            if (word.toLowerCase() !== word.toUpperCase() || /\d/.test(word)) // more than punctuation
                found.push([match.index, match.index + word.length])
        }
        words = found
        selected = -1
        findPages()
    }

    // Each page ends with the last line that is whole.
    function findPages() {
        const tops = [0]
        for (let end = height; height > 0 && end < body.contentHeight; end = tops[tops.length - 1] + height) {
            const line = body.positionToRectangle(body.positionAt(0, end)).y
            tops.push(line > tops[tops.length - 1] ? line : end)
        }
        pageTops = tops
        if (!isOnPage(selected))
            mark(touch ? -1 : firstWord())
    }

    function firstWord(): int {
        return words.findIndex((word, index) => isOnPage(index))
    }

    function mark(word: int) {
        selected = word
        if (word < 0)
            body.deselect()
        else
            body.select(words[word][0], words[word][1])
    }

    function turn(direction: int): bool {
        if (page + direction < 0 || page + direction >= pageTops.length)
            return false
        text.page = page + direction
        mark(touch ? -1 : firstWord())
        return true
    }

    function step(direction: int) {
        const next = selected + direction
        if (isOnPage(next) || (next >= 0 && next < words.length && turn(direction)))
            mark(next)
    }

    function stepLine(direction: int) {
        const from = wordRect(selected)
        const x = from.x + from.width / 2
        for (let y = from.y + from.height / 2; y >= 0 && y < pageBottom - pageTop; y += direction * letterSize / 2) {
            const next = wordAt(x, y)
            if (next >= 0 && wordRect(next).y !== from.y) {
                mark(next)
                return
            }
        }
        if (direction < 0)
            leftUpwards()
        else
            turn(1)
    }

    // The nearest in the line at this place of the page, or -1.
    function wordAt(x: real, y: real): int {
        const position = body.positionAt(x, y + pageTop)
        const line = body.positionToRectangle(position)
        if (y + pageTop < line.y || y + pageTop > line.y + line.height)
            return -1
        const next = words.findIndex(word => word[1] >= position)
        return [next, next - 1].find(word => word >= 0 && wordRect(word).y + pageTop === line.y) ?? -1
    }

    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: step(1)
    Keys.onUpPressed: stepLine(-1)
    Keys.onDownPressed: stepLine(1)
    Keys.onReturnPressed: if (selected >= 0) wordChosen(selected)
    Keys.onEnterPressed: if (selected >= 0) wordChosen(selected)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp) {
            turn(event.key === Qt.Key_PageDown ? 1 : -1)
            event.accepted = true
        }
    }
    Component.onCompleted: findWords()
    onContentChanged: Qt.callLater(findWords)
    onTouchChanged: mark(touch ? -1 : firstWord())
    onHeightChanged: findPages()

    Item {
        readonly property real first: lineAt(view.shownTop)
        readonly property real last: Math.min(lineAt(view.shownBottom), view.pageBottom - view.pageTop)

        // The top of the line at this height, or that height if it is at the page's end.
        function lineAt(y: real): real {
            return y <= 0 || y >= view.pageBottom - view.pageTop
                ? y : body.positionToRectangle(body.positionAt(0, y + view.pageTop)).y - view.pageTop
        }

        y: view.shownTop > 0 ? first + view.letterSize * 1.4 : 0
        width: parent.width
        height: last - y
        clip: true

        TextEdit {
            id: body
            y: -view.pageTop - parent.y
            width: parent.width
            readOnly: true
            activeFocusOnPress: false
            persistentSelection: true
            selectionColor: view.showsMark ? GlobalValues.defaultHoveredColor : "transparent"
            selectedTextColor: view.showsMark ? GlobalValues.defaultBackgroundColor : GlobalValues.defaultTextColor
            color: GlobalValues.defaultTextColor
            textFormat: TextEdit.RichText
            text: view.content
            wrapMode: TextEdit.Wrap
            font.family: "Noto Serif"
            // Letters stand where they were measured, however the picture of the screen is scaled.
            font.hintingPreference: Font.PreferNoHinting
            onContentSizeChanged: Qt.callLater(view.findPages)
        }
    }
    MouseArea {
        property real pressedX: 0

        x: -view.x
        width: view.parent.width
        height: view.height
        onPressed: mouse => pressedX = mouse.x
        onReleased: mouse => {
            const stroke = mouse.x - pressedX
            const inText = mouse.x - view.x
            if (Math.abs(stroke) > Global.mm(10)) {
                view.turn(stroke < 0 ? 1 : -1)
            } else if (inText < 0 || inText > view.width) {
                view.turn(inText < 0 ? -1 : 1)
            } else {
                const word = view.wordAt(inText, mouse.y)
                if (word >= 0)
                    view.wordChosen(word)
            }
        }
    }
}
