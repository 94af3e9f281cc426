import QtQuick
import QtQuick.Templates as T

// How far something is, from 0 to `maxValue`.
T.ProgressBar {
    id: control

    property alias maxValue: control.to

    to: 100
    implicitWidth: Global.mm(40)
    implicitHeight: Global.mm(1.2)
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("@Progress")

    background: Rectangle {
        color: GlobalValues.defaultBackgroundColor
        border.width: GlobalValues.defaultSolidSeparatorThickness
        border.color: GlobalValues.defaultBorderColor
        radius: height / 2
    }
    contentItem: Item {
        Rectangle {
            // In whole pixels: less would take an update of the screen and be seen by nobody.
            width: control.position > 0 ? Math.max(height, Math.round(control.position * parent.width)) : 0
            height: parent.height
            radius: height / 2
            color: GlobalValues.defaultTextColor
        }
    }
}
