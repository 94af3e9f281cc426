import QtQuick
import QtQuick.Templates as T

// What all buttons share: Enter presses them like a finger, and they are large enough for one.
T.AbstractButton {
    id: control

    readonly property bool held: enabled && (down || enter.key !== 0)
    // Whether a dialog may begin with it.
    readonly property bool focusable: true

    implicitWidth: Math.max(GlobalValues.touchTarget, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(GlobalValues.touchTarget, implicitContentHeight + topPadding + bottomPadding)

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: enabled ? "" : qsTr("@Unavailable")

    readonly property HeldKey enter: HeldKey {
        onActed: control.clicked()
    }

    Keys.enabled: visible && enabled // a hidden item may have kept the focus
    Keys.onPressed: event => enter.press(event)
    Keys.onReleased: event => enter.release(event)
    onActiveFocusChanged: if (!activeFocus) enter.drop()

    FocusElement {
        target: control
    }
}
