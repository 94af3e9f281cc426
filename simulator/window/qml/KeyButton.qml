import QtQuick
import Tessaly.Simulator

// One button of the device. Held, it repeats as a real one does.
Rectangle {
    id: button

    property DeviceKeys keys
    property int key: 0
    property string label
    property string name: label

    width: 44
    height: 44
    radius: 8
    color: touch.pressed ? "#1e1e1e" : "#6e6e6e"
    border.color: "#2c2c2c"

    Accessible.role: Accessible.Button
    Accessible.name: name

    Text {
        anchors.centerIn: parent
        text: button.label
        color: "white"
        font.pixelSize: 15
    }
    MouseArea {
        id: touch
        anchors.fill: parent
        onPressedChanged: {
            if (pressed)
                button.keys.press(button.key)
            else
                button.keys.release(button.key)
        }
    }
    Timer {
        property bool hasBegun: false
        interval: hasBegun ? 120 : 450
        repeat: true
        running: touch.pressed
        onRunningChanged: hasBegun = false
        onTriggered: {
            hasBegun = true
            button.keys.press(button.key, true)
        }
    }
}
