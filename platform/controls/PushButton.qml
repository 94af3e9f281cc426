import QtQuick
import QtQuick.Templates as T
import com.tessaly.controls.device

// What all buttons share: Enter presses them like a finger, and they are large enough for one.
T.AbstractButton {
    id: control

    readonly property bool held: enabled && (down || enterHeld)
    property bool enterHeld: false
    // Whether a dialog may begin with it.
    readonly property bool focusable: true

    implicitWidth: Math.max(GlobalValues.touchTarget, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(GlobalValues.touchTarget, implicitContentHeight + topPadding + bottomPadding)

    Accessible.role: Accessible.Button
    Accessible.name: text

    function isEnter(key: int): bool {
        return key === Qt.Key_Return || key === Qt.Key_Enter
    }

    Keys.enabled: visible && enabled // a hidden item may have kept the focus
    Keys.onPressed: event => {
        if (!isEnter(event.key))
            return
        event.accepted = true
        if (!event.isAutoRepeat)
            enterHeld = true
    }
    Keys.onReleased: event => {
        if (!isEnter(event.key))
            return
        event.accepted = true
        if (event.isAutoRepeat || !enterHeld)
            return
        enterHeld = false
        clicked()
    }
    onActiveFocusChanged: if (!activeFocus) enterHeld = false

    FocusElement {
        target: control
    }
}
