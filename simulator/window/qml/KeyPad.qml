import QtQuick
import Tessaly.Simulator

// The buttons of a device with keys, which repeat as real ones do while they are held. The PC's keyboard does the same; its
// Escape is Back.
Item {
    id: pad
    width: 380
    height: 142

    DeviceKeys {
        id: deviceKeys
        window: pad.Window.window
    }
    Repeater {
        model: [
            { key: Qt.Key_Back, text: "Back", name: "Back", x: 0, y: 49, width: 84 },
            { key: Qt.Key_Up, text: "▲", name: "Up", x: 168, y: 0, width: 44 },
            { key: Qt.Key_Left, text: "◀", name: "Left", x: 119, y: 49, width: 44 },
            { key: Qt.Key_Return, text: "OK", name: "OK", x: 168, y: 49, width: 44 },
            { key: Qt.Key_Right, text: "▶", name: "Right", x: 217, y: 49, width: 44 },
            { key: Qt.Key_Down, text: "▼", name: "Down", x: 168, y: 98, width: 44 },
            { key: Qt.Key_PageUp, text: "Page −", name: "Page up", x: 296, y: 22, width: 84 },
            { key: Qt.Key_PageDown, text: "Page +", name: "Page down", x: 296, y: 76, width: 84 }
        ]

        Rectangle {
            id: button

            required property var modelData

            x: modelData.x
            y: modelData.y
            width: modelData.width
            height: 44
            radius: 8
            color: touch.pressed ? "#1e1e1e" : "#6e6e6e"
            border.color: "#2c2c2c"
            Accessible.role: Accessible.Button
            Accessible.name: modelData.name

            // qmllint disable unqualified
            Text {
                anchors.centerIn: parent
                text: button.modelData.text
                color: "white"
                font.pixelSize: 15
            }
            MouseArea {
                id: touch
                anchors.fill: parent
                onPressedChanged: {
                    repeat.interval = 450
                    if (pressed)
                        deviceKeys.press(button.modelData.key)
                    else
                        deviceKeys.release(button.modelData.key)
                }
            }
            Timer {
                id: repeat
                repeat: true
                running: touch.pressed
                onTriggered: {
                    interval = 120
                    deviceKeys.press(button.modelData.key, true)
                }
            }
            // qmllint enable unqualified
        }
    }
}
