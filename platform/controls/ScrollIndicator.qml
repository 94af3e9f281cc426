import QtQuick
import QtQuick.Templates as T

// Shows which part of something long is to be seen. Lengths in pixels.
T.ScrollIndicator {
    id: control

    // What is shown in part. Without it the thumb is set by hand.
    property Flickable flickable: null
    property real length: flickable?.height ?? 0
    property real thumbLength: flickable ? Math.max(length * flickable.visibleArea.heightRatio,
                                                    GlobalValues.minimalScrollIndicatorThickness) : 0
    property real thumbOffset: flickable ? flickable.visibleArea.yPosition * length : 0

    // Clear of the frame at whose edge it stands.
    width: GlobalValues.scrollIndicatorThickness + rightPadding
    rightPadding: GlobalValues.scrollIndicatorSideMargin
    height: length
    Accessible.ignored: true
    // In whole pixels: the screen has no others.
    size: length > 0 ? Math.min(1, Math.round(thumbLength) / length) : 1
    position: length > 0 ? Math.max(0, Math.round(Math.min(thumbOffset, length - thumbLength))) / length : 0

    contentItem: Rectangle {
        implicitWidth: GlobalValues.scrollIndicatorThickness
        radius: width / 2
        color: GlobalValues.defaultTextColor
    }
}
