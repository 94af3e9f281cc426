import QtQuick
import QtQuick.Window
import Tessaly.Simulator

// The simulator's window: the device, and beside it what surrounds the device.
Window {
    id: window

    required property DeviceSwitches device
    readonly property size wanted: Qt.size(body.fullWidth + panel.width, body.fullHeight)
    readonly property real roomFactor: Math.min(1, Screen.desktopAvailableWidth * 0.96 / wanted.width,
                                                Screen.desktopAvailableHeight * 0.92 / wanted.height)

    function endWork() {
        body.endWork()
    }

    // What the device's programs lay over the whole window belongs on the device's screen.
    function bringIn() {
        for (const item of Array.from(contentItem.children)) {
            if (item !== body && item !== panel)
                body.showAbove(item)
        }
    }

    width: Math.round(body.fullWidth * roomFactor + panel.width)
    height: Math.round(body.fullHeight * roomFactor)
    minimumWidth: panel.width + 320
    minimumHeight: 480
    visible: true
    color: "#e4e4e4"
    title: "Tessaly simulator"

    Connections {
        target: window.contentItem
        function onChildrenChanged() {
            Qt.callLater(window.bringIn) // qmllint disable
        }
    }
    DeviceBody {
        id: body
        anchors.left: parent.left
        anchors.right: panel.left
        height: parent.height
        focus: true
        touch: window.device.state.touch
        paper: panel.paper
    }
    SwitchPanel {
        id: panel
        anchors.right: parent.right
        width: 300
        height: parent.height
        device: window.device
        paperScreen: body.paperScreen
    }
}
