import QtQuick
import Tessaly.Simulator

// The buttons of a device with keys. The PC's keyboard does the same; its Escape is Back.
Item {
    id: pad

    width: 380
    height: 142

    DeviceKeys {
        id: deviceKeys
        window: pad.Window.window
    }

    KeyButton {
        keys: deviceKeys
        key: Qt.Key_Back
        label: "Back"
        anchors.verticalCenter: parent.verticalCenter
        width: 84
    }
    Item {
        anchors.centerIn: parent
        width: 142
        height: 142

        KeyButton {
            keys: deviceKeys
            key: Qt.Key_Up
            label: "▲"
            name: "Up"
            anchors.horizontalCenter: parent.horizontalCenter
        }
        KeyButton {
            keys: deviceKeys
            key: Qt.Key_Left
            label: "◀"
            name: "Left"
            anchors.verticalCenter: parent.verticalCenter
        }
        KeyButton {
            keys: deviceKeys
            key: Qt.Key_Return
            label: "OK"
            anchors.centerIn: parent
        }
        KeyButton {
            keys: deviceKeys
            key: Qt.Key_Right
            label: "▶"
            name: "Right"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
        }
        KeyButton {
            keys: deviceKeys
            key: Qt.Key_Down
            label: "▼"
            name: "Down"
            anchors.bottom: parent.bottom
            anchors.horizontalCenter: parent.horizontalCenter
        }
    }
    Column {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 10

        KeyButton {
            keys: deviceKeys
            key: Qt.Key_PageUp
            label: "Page −"
            name: "Page up"
            width: 84
        }
        KeyButton {
            keys: deviceKeys
            key: Qt.Key_PageDown
            label: "Page +"
            name: "Page down"
            width: 84
        }
    }
}
