import QtQuick

// The title bar of a dialog.
Item {
    property alias text: label.text

    implicitHeight: Math.max(GlobalValues.dialogHeaderHeight, label.implicitHeight + 2 * Global.mm(2))

    StyledText {
        id: label
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: GlobalValues.dialogSidePadding
        anchors.rightMargin: GlobalValues.dialogSidePadding
        anchors.verticalCenter: parent.verticalCenter
        fontStyle: FontStyles.BodyBold
        wrapMode: Text.Wrap
    }
    SolidSeparator {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: GlobalValues.dialogHeaderSeparatorSideOffset
        anchors.rightMargin: GlobalValues.dialogHeaderSeparatorSideOffset
        anchors.bottom: parent.bottom
    }
}
