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
        x: GlobalValues.dialogSidePadding
        width: parent.width - 2 * x
        anchors.bottom: line.top
        anchors.bottomMargin: Global.mm(0.8)
        fontStyle: FontStyles.Heading2
        elide: Text.ElideRight
    }
    SolidSeparator {
        id: line
        x: GlobalValues.dialogHeaderSeparatorSideOffset
        width: parent.width - 2 * x
        height: GlobalValues.defaultBorderThickness
        anchors.bottom: parent.bottom
    }
}
