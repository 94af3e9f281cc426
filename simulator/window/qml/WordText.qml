import QtQuick
import com.tessaly.controls

// A word on the page; white on black while it is marked.
Item {
    id: word

    property alias text: label.text
    property alias font: label.font
    property bool marked: false

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -Global.mm(0.6)
        anchors.rightMargin: -Global.mm(0.6)
        visible: word.marked
        color: GlobalValues.defaultHoveredColor
        radius: Global.mm(0.5)
    }
    Text {
        id: label
        anchors.verticalCenter: parent.verticalCenter
        textFormat: Text.PlainText
        color: word.marked ? GlobalValues.defaultBackgroundColor : GlobalValues.defaultTextColor
    }
}
