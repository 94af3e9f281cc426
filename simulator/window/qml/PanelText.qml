import QtQuick

Text {
    width: parent ? parent.width : 0
    color: "#303030"
    font.pixelSize: 14
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
}
