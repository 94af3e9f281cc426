import QtQuick

// Keys that act when they are let go. A release belongs to whoever had the focus when the key went down: the item around
// hands on its presses and releases, and calls `drop` when it loses the focus.
QtObject {
    // Whether it is for Return and Enter, and whether for Left and Right.
    property bool enters: true
    property bool sideways: false
    // Whether a press counts. What isn't counted is consumed all the same.
    property bool enabled: true
    // The key that is down; 0 is none.
    property int key: 0

    signal acted(int key)

    function isOne(key: int): bool {
        return (enters && (key === Qt.Key_Return || key === Qt.Key_Enter))
               || (sideways && (key === Qt.Key_Left || key === Qt.Key_Right))
    }

    function press(event) {
        if (!isOne(event.key))
            return
        event.accepted = true
        if (enabled && !event.isAutoRepeat)
            key = event.key
    }

    function release(event) {
        if (!isOne(event.key))
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
