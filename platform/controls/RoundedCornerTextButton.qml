import QtQuick

// A text button in a rounded frame, of which single sides can be left out.
TextButton {
    id: control

    property alias title: control.text
    // 1 or 0 for the top, right, bottom and left side. A corner is round where both its sides are there.
    property var visibleBorders: [1, 1, 1, 1]
    property real borderWidth: GlobalValues.defaultBorderThickness
    property color borderColor: GlobalValues.defaultBorderColor
    property real radius: GlobalValues.dialogRadius

    background: Item {
        clip: true

        Rectangle {
            // What is left out lies beyond the clipped edge.
            readonly property real beyond: control.radius + control.borderWidth

            anchors.fill: parent
            anchors.topMargin: control.visibleBorders[0] ? 0 : -beyond
            anchors.rightMargin: control.visibleBorders[1] ? 0 : -beyond
            anchors.bottomMargin: control.visibleBorders[2] ? 0 : -beyond
            anchors.leftMargin: control.visibleBorders[3] ? 0 : -beyond
            radius: control.radius
            border.width: control.borderWidth
            border.color: control.borderColor
            color: control.held ? GlobalValues.defaultHoveredColor : GlobalValues.defaultBackgroundColor
        }
    }
}
