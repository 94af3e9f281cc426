import QtQuick

// An icon and a text beside it: a button, or with `interactive` false something to read.
PushButton {
    id: control

    // The icon's bare name.
    property string image
    property bool interactive: true
    property int fontStyle: FontStyles.Body
    property color textColor: GlobalValues.defaultTextColor

    readonly property bool unusable: interactive && !enabled

    enabled: interactive
    implicitHeight: interactive ? Math.max(GlobalValues.touchTarget, implicitContentHeight + 2 * padding)
                                : implicitContentHeight
    font.family: FontStyles.family
    font.pointSize: FontStyles.pointSizes[fontStyle]
    font.bold: FontStyles.bold[fontStyle]
    padding: Global.mm(interactive ? 1 : 0)
    spacing: image ? Global.mm(2) : 0
    Accessible.ignored: !interactive // a button's role can't be changed: its label speaks instead

    background: Rectangle {
        color: control.held ? GlobalValues.defaultHoveredColor : "transparent"
        radius: GlobalValues.listElementHoverFrameBorderRadius
    }

    // A type of its own, since an id within it would have the item made at once, even if another is set.
    component IconLabel: Item {
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
        Text {
            id: label
            anchors.left: image.right
            anchors.leftMargin: root.spacing
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.width - image.width - root.spacing)
            textFormat: Text.PlainText
            elide: Text.ElideRight
        }
    }

    contentItem: IconLabel {
        icon: !control.image ? "" : control.held ? Global.getInvertedImage(control.image)
                                  : Global.getNormalImage(control.image + (control.unusable ? "_disabled" : ""))
        text: control.text
        font: control.font
        textColor: control.held ? GlobalValues.defaultBackgroundColor
                 : control.unusable ? FontStyles.disabledTextColor : control.textColor
        spacing: control.spacing
        Accessible.ignored: control.interactive
        Accessible.role: Accessible.StaticText
        Accessible.name: control.text
    }
}
