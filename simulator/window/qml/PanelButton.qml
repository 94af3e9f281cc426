import QtQuick

// A button, one of several to choose from, or a box to tick. What it stands for says whether it is marked.
Rectangle {
    id: button

    property string text
    property bool marked: false
    property bool checkable: false

    signal clicked()

    width: parent ? parent.width : 0
    height: 32
    radius: 4
    color: area.pressed ? "#c8c8c8" : checkable ? "transparent" : marked ? "#303030" : "white"
    border.color: "#303030"
    border.width: checkable ? 0 : 1

    Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
    Accessible.name: text
    Accessible.checked: checkable && marked
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()

    Text {
        anchors.verticalCenter: parent.verticalCenter
        anchors.horizontalCenter: button.checkable ? undefined : parent.horizontalCenter
        color: button.marked && !button.checkable ? "white" : "#202020"
        font.pixelSize: 14
        textFormat: Text.PlainText
        text: (button.checkable ? button.marked ? "☑  " : "☐  " : "") + button.text
    }
    MouseArea {
        id: area
        anchors.fill: parent
        onClicked: button.clicked()
    }
}
