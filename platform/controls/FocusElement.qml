import QtQuick
import com.tessaly.controls.device

// The frame around what has the focus, on devices with keys only.
Rectangle {
    id: frame

    property Item target: parent

    anchors.fill: parent
    z: 10
    visible: !DeviceInfoProvider.touch && target !== null && target.activeFocus
    color: "transparent"
    radius: GlobalValues.listElementHoverFrameBorderRadius
    border.width: GlobalValues.focusFrameThickness
    border.color: GlobalValues.defaultBorderColor
}
