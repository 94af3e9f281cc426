import QtQuick

// Text as the interface sets it.
Text {
    property int fontStyle: FontStyles.Body

    color: GlobalValues.defaultTextColor
    textFormat: Text.PlainText
    font.family: FontStyles.family
    font.pointSize: FontStyles.pointSizes[fontStyle]
    font.bold: FontStyles.bold[fontStyle]
}
