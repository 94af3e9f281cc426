import QtQuick
import QtQuick.Templates as T

// Shows which part of something long is to be seen. Lengths in pixels.
T.ScrollIndicator {
    id: control

    property real length: 0
    property real thumbLength: 0
    property real thumbOffset: 0

    width: GlobalValues.scrollIndicatorThickness
    height: length
    size: length > 0 ? Math.min(1, thumbLength / length) : 1
    position: length > 0 ? Math.max(0, Math.min(thumbOffset, length - thumbLength)) / length : 0

    contentItem: Rectangle {
        implicitWidth: GlobalValues.scrollIndicatorThickness
        radius: width / 2
        color: GlobalValues.defaultTextColor
    }
}
