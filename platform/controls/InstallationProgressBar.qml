import QtQuick

// An installation: something at the left, its title, and how far it is.
Item {
    id: bar

    property string title
    property alias progress: progressBar
    property Item leftItem: null
    property real rightMargin: Global.mm(2)

    implicitHeight: Math.max(GlobalValues.listElementHeight, leftPlace.height,
                             column.implicitHeight + 2 * Global.mm(1.5))

    onLeftItemChanged: if (leftItem) leftItem.parent = leftPlace

    Item {
        id: leftPlace
        width: bar.leftItem ? bar.leftItem.width : 0
        height: bar.leftItem ? bar.leftItem.height : 0
        anchors.verticalCenter: parent.verticalCenter
    }
    Column {
        id: column
        anchors.left: leftPlace.right
        anchors.right: parent.right
        anchors.rightMargin: bar.rightMargin
        anchors.verticalCenter: parent.verticalCenter
        spacing: Global.mm(1.5)

        StyledText {
            width: parent.width
            text: bar.title
            elide: Text.ElideRight
        }
        ProgressBar {
            id: progressBar
            width: parent.width
            Accessible.name: bar.title
        }
    }
}
