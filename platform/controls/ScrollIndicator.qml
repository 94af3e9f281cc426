import QtQuick

// Shows which part of something long is to be seen. Lengths in pixels.
Item {
    id: control

    // What is shown in part. Without it the thumb is set by hand.
    property Flickable flickable: null
    property real length: flickable?.height ?? 0
    property real thumbLength: flickable ? Math.max(length * flickable.visibleArea.heightRatio,
                                                    GlobalValues.minimalScrollIndicatorThickness) : 0
    property real thumbOffset: flickable ? flickable.visibleArea.yPosition * length : 0

    // Clear of the frame at whose edge it stands.
    width: GlobalValues.scrollIndicatorThickness + GlobalValues.scrollIndicatorSideMargin
    height: length
    Accessible.ignored: true

    Rectangle {
        // In whole pixels: the screen has no others.
        y: Math.max(0, Math.round(Math.min(control.thumbOffset, control.length - control.thumbLength)))
        width: GlobalValues.scrollIndicatorThickness
        height: Math.min(control.length, Math.round(control.thumbLength))
        radius: width / 2
        color: GlobalValues.defaultTextColor
    }
}
