pragma Singleton
import QtQuick
import com.tessaly.controls.device

// Sizes (in pixels, from millimetres on the screen), colours and times of the whole interface.
QtObject {
    readonly property real touchTarget: Global.mm(9.5)
    readonly property real listElementHeight: Global.mm(11.5)
    readonly property real listElementHoverFrameBorderRadius: Global.mm(1)

    // What dialogs and messages keep clear at the screen's edges.
    readonly property real screenMargin: Global.mm(3)
    readonly property real defaultDialogWidth: DeviceInfoProvider.screenWidth - 2 * screenMargin
    // About 11 mm, so that a list's screen is filled by whole rows.
    readonly property real dialogHeaderHeight: Math.max(
        touchTarget, Math.floor((DeviceInfoProvider.screenHeight - besideRows - rowsOnScreen * listElementHeight) / 3))
    // What else there is on a list's screen of which three headers' height is kept free: the wide button and the line
    // and gap above it.
    readonly property real besideRows: Global.pixelsFromDesign(125) + defaultSolidSeparatorThickness
                                       + dialogContentTopBottomOffset
    readonly property int rowsOnScreen:
        Math.round((DeviceInfoProvider.screenHeight - besideRows - 3 * Global.mm(11)) / listElementHeight)
    readonly property real dialogHeaderSeparatorSideOffset: Global.mm(2.5)
    readonly property real dialogSidePadding: Global.mm(4.5)
    readonly property real dialogContentTopBottomOffset: Global.mm(1)
    readonly property real dialogBottomButtonsHeight: Global.mm(12)
    readonly property real dialogRadius: Global.mm(1.5)

    // Questions and messages are narrower than the dialogs that they stand on, and keep a white gap around.
    readonly property real infoMessageWidth: defaultDialogWidth - 2 * screenMargin
    readonly property real infoMessageHeight: Global.mm(25) // takes the longest message in each language
    readonly property real boxGap: Global.mm(0.8)

    readonly property real scrollListButtonsHeight: Global.mm(11)
    readonly property real scrollIndicatorThickness: Global.mm(1)
    readonly property real scrollIndicatorSideMargin: Global.mm(0.5)
    // The least length of a scroll indicator's thumb.
    readonly property real minimalScrollIndicatorThickness: Global.mm(6)

    readonly property color defaultBackgroundColor: "white"
    readonly property color defaultTextColor: "black"
    readonly property color defaultHoveredColor: "black"
    readonly property color defaultBorderColor: "black"
    readonly property color defaultSolidseparatorColor: "black"

    readonly property real defaultSolidSeparatorThickness: Math.max(1, Global.mm(0.15))
    readonly property real defaultBorderThickness: Math.max(2, Global.mm(0.3))
    readonly property real defaultPressedFrameBorderWidth: Math.max(2, Global.mm(0.3))
    readonly property real focusFrameThickness: Math.max(3, Global.mm(0.45))

    // In points of the host's screen, as fonts with a point size are.
    readonly property real fontUserCommentPointSize: DeviceInfoProvider.pointSize(Global.pixelsFromDesign(34))

    // Milliseconds that a finger may rest on a list before it presses what is under it.
    readonly property int listPressDelay: 80
    // Milliseconds for which a press stays to be seen, on a display that takes its time.
    readonly property int pressedShownTime: 200
}
