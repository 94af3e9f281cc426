import QtQuick

// An icon and a text beside it.
Item {
    id: root

    property string icon
    property alias text: label.text
    property alias textColor: label.color
    property alias font: label.font
    property real spacing: 0

    implicitWidth: image.width + spacing + label.implicitWidth
    implicitHeight: Math.max(image.height, label.implicitHeight)

    Image {
        id: image
        // Not higher than the letters beside it.
        height: Math.min(implicitHeight, Math.ceil(0.8 * label.implicitHeight))
        width: root.icon ? implicitWidth * height / Math.max(1, implicitHeight) : 0
        fillMode: Image.PreserveAspectFit
        anchors.verticalCenter: parent.verticalCenter
        source: root.icon
    }
    StyledText {
        id: label
        anchors.left: image.right
        anchors.leftMargin: root.spacing
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.width - image.width - root.spacing)
        elide: Text.ElideRight
    }
}
