import QtQuick

// A box to tick. What it switches says whether it is ticked.
Item {
    id: control

    property alias text: label.text
    property bool checked: false

    signal toggled()

    width: parent ? parent.width : 0
    height: 30

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checked: checked
    Accessible.onToggleAction: toggled()

    Rectangle {
        id: box
        width: 20
        height: 20
        anchors.verticalCenter: parent.verticalCenter
        radius: 3
        color: control.checked ? "#303030" : "white"
        border.color: "#303030"
        border.width: area.pressed ? 3 : 1

        Text {
            anchors.centerIn: parent
            visible: control.checked
            text: "✓"
            color: "white"
            font.pixelSize: 16
        }
    }
    PanelText {
        id: label
        anchors.left: box.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
    }
    MouseArea {
        id: area
        anchors.fill: parent
        onClicked: control.toggled()
    }
}
