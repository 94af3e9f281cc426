import QtQuick
import com.tessaly.controls 1.0

// A wide button: an icon, or a busy indicator in its place, a caption beside it, and a hint below.
Rectangle {
    id: wrapper

    property string normalColor: "transparent"
    property string pressed_color: "black"
    property alias text: caption.text
    // Not the item's own: a disabled button keeps the focus and its keys.
    property bool enabled: true
    property string icon
    property string disabled_icon
    property alias busy_visible: busy_indicator.visible
    property alias font: caption.font
    property bool showLongPressText: true

    signal action()

    implicitWidth: caption.implicitWidth + icon_place.width
    implicitHeight: Global.pixelsFromDesign(125)
    clip: true
    state: "Normal"
    Accessible.role: Accessible.Button
    Accessible.name: caption.text
    Accessible.description: wrapper.enabled ? "" : qsTr("@Unavailable")
    Accessible.focusable: true
    Accessible.onPressAction: if (wrapper.enabled) wrapper.action()

    states: [
        State {
            name: "Normal"
            PropertyChanges {
                target: wrapper
                color: wrapper.normalColor
            }
            PropertyChanges {
                target: caption
                color: wrapper.pressed_color
            }
            PropertyChanges {
                target: busy_indicator
                inverted: false
            }
            PropertyChanges {
                target: internal
                iconSource: Global.getNormalImage(wrapper.icon)
            }
        },
        State {
            name: "Pressed"
            PropertyChanges {
                target: wrapper
                color: DeviceInfoProvider.touch ? wrapper.pressed_color : wrapper.normalColor
            }
            PropertyChanges {
                target: icon_place
                color: wrapper.busy_visible ? wrapper.pressed_color : "transparent"
            }
            PropertyChanges { // without touch the button stays white, and what is on it black
                target: caption
                color: DeviceInfoProvider.touch ? "white" : wrapper.pressed_color
            }
            PropertyChanges {
                target: busy_indicator
                inverted: true
            }
            PropertyChanges {
                target: internal
                iconSource: DeviceInfoProvider.touch ? Global.getInvertedImage(wrapper.icon)
                                                     : Global.getNormalImage(wrapper.icon)
            }
        },
        State {
            name: "Disabled"
            PropertyChanges {
                target: wrapper
                color: wrapper.normalColor
            }
            PropertyChanges {
                target: caption
                color: FontStyles.disabledTextColor
            }
            PropertyChanges {
                target: busy_indicator
                inverted: false
            }
            PropertyChanges {
                target: internal
                iconSource: Global.getNormalImage(wrapper.disabled_icon)
            }
        }
    ]

    onEnabledChanged: {
        release_timer.stop()
        wrapper.state = wrapper.enabled ? "Normal" : "Disabled"
    }
    onActiveFocusChanged: {
        if (wrapper.activeFocus || enter.key === 0)
            return
        enter.drop()
        if (wrapper.state === "Pressed")
            wrapper.state = "Normal"
    }

    Keys.onPressed: event => enter.press(event)
    Keys.onReleased: event => enter.release(event)

    HeldKey {
        id: enter
        enabled: wrapper.state !== "Disabled"
        onKeyChanged: if (key !== 0) wrapper.state = "Pressed"
        onActed: if (wrapper.state === "Pressed") internal.release()
    }

    QtObject {
        id: internal

        property string iconSource
        property double pressedAt: 0 // milliseconds

        function release() {
            wrapper.state = "Normal"
            wrapper.action()
        }

        function completeDelayedRelease() {
            if (!release_timer.running)
                return
            release_timer.stop()
            release()
        }

        function cancelPress() {
            if (wrapper.state === "Disabled")
                return
            wrapper.state = "Normal"
            completeDelayedRelease()
        }
    }

    Timer {
        id: release_timer
        interval: 200
        onTriggered: internal.release()
    }

    Item {
        id: inner

        // The hint needs room below.
        readonly property real lift: long_press_hint.visible ? -Global.dp(6) : 0

        anchors.horizontalCenter: parent.horizontalCenter
        y: long_press_hint.visible ? Global.dp(14) : Math.round((parent.height - height) / 2)
        width: caption.x + caption.width
        height: Math.max(icon_place.height, caption.height)

        Rectangle {
            id: icon_place
            anchors.verticalCenter: parent.verticalCenter
            anchors.verticalCenterOffset: inner.lift
            width: Global.pixelsFromDesign(60)
            height: width
            color: "transparent"

            Image {
                anchors.centerIn: parent
                visible: !wrapper.busy_visible
                source: internal.iconSource
            }
            BusyIndicator {
                id: busy_indicator
                anchors.fill: parent
                visible: false
            }
        }
        StyledText {
            id: caption
            anchors.left: icon_place.right
            anchors.verticalCenter: parent.verticalCenter
            anchors.verticalCenterOffset: inner.lift
            leftPadding: Global.pixelsFromDesign(12)
            width: Math.min(implicitWidth, wrapper.width - icon_place.width)
            fontStyle: FontStyles.Heading5
            elide: Text.ElideRight
        }
    }

    // Only devices with keys have one: a button takes long to make.
    // qmllint disable unqualified
    Loader {
        id: long_press_hint
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Math.round(1.5 * GlobalValues.focusFrameThickness) // reaches into the caption's line
        active: inner.height > 0 && wrapper.enabled && wrapper.showLongPressText
        visible: active
        sourceComponent: BitmapTextButton {
            padding: 0
            interactive: false
            image: "desktop_arrow_down_joystick"
            text: qsTr("@LongPress")
            textColor: caption.color
            font.italic: true
            font.pointSize: GlobalValues.fontUserCommentPointSize
        }
    }
    // qmllint enable unqualified

    MouseArea {
        anchors.fill: parent
        onPressed: {
            if (wrapper.state === "Disabled")
                return
            internal.completeDelayedRelease()
            if (wrapper.state === "Disabled" || !pressed || !wrapper.visible) // by what the release did
                return
            internal.pressedAt = Date.now()
            wrapper.state = "Pressed"
        }
        onReleased: {
            if (wrapper.state !== "Pressed")
                return
            if (!containsMouse)
                internal.cancelPress()
            else if (Date.now() - internal.pressedAt < release_timer.interval)
                release_timer.restart()
            else
                internal.release()
        }
        onCanceled: internal.cancelPress()
    }
}
