import QtQuick

// Keys that act when they are let go. A release belongs to whoever had the focus when the key went down: the item around
// hands on its presses and releases, and calls `drop` when it loses the focus.
QtObject {
    property var keys: [Qt.Key_Return, Qt.Key_Enter]
    // Whether a press counts. What isn't counted is consumed all the same.
    property bool enabled: true
    // The key that is down; 0 is none.
    property int key: 0

    signal acted(int key)

    function press(event) {
        if (!keys.includes(event.key))
            return
        event.accepted = true
        if (enabled && !event.isAutoRepeat)
            key = event.key
    }

    function release(event) {
        if (!keys.includes(event.key))
            return
        event.accepted = true
        if (event.isAutoRepeat || event.key !== key)
            return
        key = 0
        acted(event.key)
    }

    function drop() {
        key = 0
    }
}
