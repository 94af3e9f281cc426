import QtQuick

// Text as the interface sets it.
Text {
    property int fontStyle: FontStyles.Body

    color: GlobalValues.defaultTextColor
    textFormat: Text.PlainText
    font.family: FontStyles.family
    font.pointSize: FontStyles.pointSize(fontStyle)
    font.bold: FontStyles.isBold(fontStyle)
}
