import QtQuick
import Tessaly.Simulator

// The buttons of a device with keys. The PC's keyboard does the same; its Escape is Back.
Item {
    id: pad

    // A button. Held, it repeats as a real one does.
    component Key: Rectangle {
        id: button

        property DeviceKeys keys
        property int key: 0
        property string text
        property string name: text

        width: 44
        height: 44
        radius: 8
        color: touch.pressed ? "#1e1e1e" : "#6e6e6e"
        border.color: "#2c2c2c"

        Accessible.role: Accessible.Button
        Accessible.name: name

        Text {
            anchors.centerIn: parent
            text: button.text
            color: "white"
            font.pixelSize: 15
        }
        MouseArea {
            id: touch
            anchors.fill: parent
            onPressedChanged: {
                repeat.interval = 450
                if (pressed)
                    button.keys.press(button.key)
                else
                    button.keys.release(button.key)
            }
        }
        Timer {
            id: repeat
            repeat: true
            running: touch.pressed
            onTriggered: {
                interval = 120
                button.keys.press(button.key, true)
            }
        }
    }

    width: 380
    height: 142

    DeviceKeys {
        id: deviceKeys
        window: pad.Window.window
    }

    Key {
        keys: deviceKeys
        key: Qt.Key_Back
        text: "Back"
        y: 49
        width: 84
    }
    Repeater {
        model: [
            { key: Qt.Key_Up, text: "▲", name: "Up", x: 1, y: 0 },
            { key: Qt.Key_Left, text: "◀", name: "Left", x: 0, y: 1 },
            { key: Qt.Key_Return, text: "OK", name: "OK", x: 1, y: 1 },
            { key: Qt.Key_Right, text: "▶", name: "Right", x: 2, y: 1 },
            { key: Qt.Key_Down, text: "▼", name: "Down", x: 1, y: 2 }
        ]
        delegate: Key {
            required property var modelData
            x: 119 + 49 * modelData.x
            y: 49 * modelData.y
            keys: deviceKeys
            key: modelData.key
            text: modelData.text
            name: modelData.name
        }
    }
    Column {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 10

        Key {
            keys: deviceKeys
            key: Qt.Key_PageUp
            text: "Page −"
            name: "Page up"
            width: 84
        }
        Key {
            keys: deviceKeys
            key: Qt.Key_PageDown
            text: "Page +"
            name: "Page down"
            width: 84
        }
    }
}
