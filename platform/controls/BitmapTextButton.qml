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
