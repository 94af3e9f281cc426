import QtQuick
import com.tessaly.controls
import Tessaly.Simulator

// The words of a page. A finger chooses one, or turns the page at the margins and by a stroke; keys step from word to
// word.
FocusScope {
    id: view

    property ReaderText text
    readonly property var words: text.words
    // The word that is marked, or -1.
    property int selected: -1
    readonly property bool touch: DeviceInfoProvider.touch

    // Words are shown between these heights; one that would be cut through isn't.
    property real shownTop: 0
    property real shownBottom: height

    signal wordChosen(int word)
    signal leftUpwards()

    function turn(direction: int): bool {
        if (!text.turn(direction))
            return false
        selected = touch ? -1 : nextWord(-1, 1)
        return true
    }

    // The next in this direction that is more than punctuation, or -1.
    function nextWord(word: int, direction: int): int {
        for (let next = word + direction; next >= 0 && next < words.length; next += direction) {
            if (words[next].canLookUp)
                return next
        }
        return -1
    }

    function step(direction: int) {
        const next = nextWord(selected, direction)
        if (next >= 0)
            selected = next
        else if (turn(direction) && direction < 0)
            selected = nextWord(words.length, -1)
    }

    function stepLine(direction: int) {
        const next = text.wordInNextLine(selected, direction)
        if (next < 0) {
            if (direction < 0)
                leftUpwards()
            else
                turn(1)
            return
        }
        selected = words[next].canLookUp ? next : Math.max(nextWord(next, 1), nextWord(next, -1))
    }

    function wordAt(x: real, y: real): int {
        const slack = Global.mm(1)
        return words.findIndex(word => word.canLookUp && x >= word.x - slack && x <= word.x + word.width + slack
                                       && y >= word.y && y <= word.y + word.height)
    }

    function markForKeys() {
        selected = touch ? -1 : nextWord(-1, 1)
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
    onTouchChanged: markForKeys()
    onWordsChanged: if (selected < 0 || selected >= words.length) markForKeys()

    Connections {
        target: view.text
        function onTextChanged() {
            view.selected = -1
        }
    }
    Repeater {
        model: view.words
        // qmllint disable unqualified
        delegate: WordText {
            required property int index
            required property var modelData
            x: modelData.x
            y: modelData.y
            width: modelData.width
            height: modelData.height
            text: modelData.text
            font: modelData.font
            marked: index === view.selected
            visible: y >= view.shownTop && y + height <= view.shownBottom
        }
        // qmllint enable unqualified
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
