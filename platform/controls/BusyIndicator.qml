import QtQuick
import QtQuick.Templates as T

// Dots in a ring, one of them large. It steps on, rather than turns: the display is slow.
T.BusyIndicator {
    id: control

    property bool inverted: false
    property int step: 0

    implicitWidth: Global.mm(6)
    implicitHeight: Global.mm(6)
    running: visible
    Accessible.ignored: true // its role can't be changed: what it shows speaks instead

    Timer {
        interval: 600
        repeat: true
        running: control.running && control.visible
        onTriggered: control.step = (control.step + 1) % 8
    }
    contentItem: Item {
        Accessible.role: Accessible.Animation
        Accessible.name: qsTr("@Busy")

        Repeater {
            model: control.visible ? 8 : 0

            Rectangle {
                required property int index
                readonly property real angle: index * Math.PI / 4
                readonly property real side: Math.min(parent.width, parent.height)

                // qmllint disable unqualified
                width: Math.round(side * (index === control.step ? 0.26 : 0.13))
                color: control.inverted ? GlobalValues.defaultBackgroundColor : GlobalValues.defaultTextColor
                // qmllint enable unqualified
                height: width
                radius: width / 2
                x: parent.width / 2 + Math.sin(angle) * side * 0.36 - width / 2
                y: parent.height / 2 - Math.cos(angle) * side * 0.36 - height / 2
            }
        }
    }
}
