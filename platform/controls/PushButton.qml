import QtQuick

// What all buttons share: Enter presses them like a finger, and they are large enough for one. What they show are their
// children, whose size `implicitContentWidth` and `implicitContentHeight` tell. Qt Quick Templates has buttons too, but
// loading it is a tenth of all work until there is a list.
Item {
    id: control

    property string text
    property real implicitContentWidth: 0
    property real implicitContentHeight: 0
    property real padding: 0
    property real leftPadding: padding
    property real rightPadding: padding
    property bool down: finger.pressed && isWithin(finger.x, finger.y)
    readonly property alias pressed: finger.pressed
    readonly property bool held: enabled && (down || enter.key !== 0)
    // Whether a dialog may begin with it.
    readonly property bool focusable: true

    signal clicked()

    function isWithin(x: real, y: real): bool {
        return x >= 0 && x < width && y >= 0 && y < height
    }

    implicitWidth: Math.max(GlobalValues.touchTarget, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(GlobalValues.touchTarget, implicitContentHeight + 2 * padding)
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: enabled ? "" : qsTr("@Unavailable")
    Accessible.focusable: true
    Accessible.onPressAction: if (enabled) clicked()

    readonly property HeldKey enter: HeldKey {
        onActed: control.clicked()
    }

    Keys.enabled: visible && enabled // a hidden item may have kept the focus
    Keys.onPressed: event => enter.press(event)
    Keys.onReleased: event => enter.release(event)
    onActiveFocusChanged: if (!activeFocus) enter.drop()

    // A mouse area would take back the second of two quick taps.
    MultiPointTouchArea {
        anchors.fill: parent
        maximumTouchPoints: 1
        touchPoints: TouchPoint { id: finger }
        onPressed: control.forceActiveFocus(Qt.MouseFocusReason)
        onReleased: if (control.isWithin(finger.x, finger.y)) control.clicked()
    }
    FocusElement {
        target: control
    }
}
