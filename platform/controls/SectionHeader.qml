import QtQuick

// The title of a part of a list.
Item {
    property alias title: label.text

    width: parent ? parent.width : implicitWidth
    implicitWidth: label.implicitWidth
    implicitHeight: GlobalValues.listElementHeight
    Accessible.role: Accessible.Heading
    Accessible.name: title

    StyledText {
        id: label
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: GlobalValues.dialogSidePadding
        anchors.rightMargin: GlobalValues.dialogSidePadding
        anchors.bottom: line.top
        anchors.bottomMargin: Global.mm(0.8)
        fontStyle: FontStyles.Heading2
        elide: Text.ElideRight
    }
    Rectangle {
        id: line
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: GlobalValues.dialogHeaderSeparatorSideOffset
        anchors.rightMargin: GlobalValues.dialogHeaderSeparatorSideOffset
        anchors.bottom: parent.bottom
        height: GlobalValues.defaultBorderThickness
        color: GlobalValues.defaultTextColor
    }
}
