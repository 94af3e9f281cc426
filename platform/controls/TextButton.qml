import QtQuick

// A button that is a text; black while it is pressed.
PushButton {
    id: control

    property int fontStyle: FontStyles.Heading5

    leftPadding: Global.mm(1)
    rightPadding: Global.mm(1)

    background: Rectangle {
        color: control.held ? GlobalValues.defaultHoveredColor : "transparent"
    }
    contentItem: StyledText {
        text: control.text
        fontStyle: control.fontStyle
        font.capitalization: Font.AllUppercase
        color: control.held ? GlobalValues.defaultBackgroundColor
             : control.enabled ? GlobalValues.defaultTextColor : FontStyles.disabledTextColor
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
}
