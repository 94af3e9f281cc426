import QtQuick

Rectangle {
    color: "transparent"
    radius: GlobalValues.listElementHoverFrameBorderRadius
    border.width: GlobalValues.focusFrameThickness
    border.color: GlobalValues.defaultBorderColor
}
