import QtQuick

Rectangle {
    id: button

    property alias text: label.text
    property bool marked: false

    signal clicked()

    width: parent ? parent.width : 0
    height: 32
    radius: 4
    color: marked ? "#303030" : area.pressed ? "#c8c8c8" : "white"
    border.color: "#303030"

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()

    Text {
        id: label
        anchors.centerIn: parent
        color: button.marked ? "white" : "#202020"
        font.pixelSize: 14
        textFormat: Text.PlainText
    }
    MouseArea {
        id: area
        anchors.fill: parent
        onClicked: button.clicked()
    }
}
