import QtQuick

// How far something is, from 0 to `maxValue`.
Rectangle {
    id: control

    property real from: 0
    property real to: 100
    property real value: 0
    property alias maxValue: control.to
    readonly property real position: to > from ? Math.max(0, Math.min((value - from) / (to - from), 1)) : 0

    implicitWidth: Global.mm(40)
    implicitHeight: Global.mm(1.2)
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("@Progress")

    color: GlobalValues.defaultBackgroundColor
    border.width: GlobalValues.defaultSolidSeparatorThickness
    border.color: GlobalValues.defaultBorderColor
    radius: height / 2

    Rectangle {
        // In whole pixels: less would take an update of the screen and be seen by nobody.
        width: control.position > 0 ? Math.max(height, Math.round(control.position * parent.width)) : 0
        height: parent.height
        radius: height / 2
        color: GlobalValues.defaultTextColor
    }
}
