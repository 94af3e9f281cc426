import QtQuick

// Page buttons at both ends of a bar: a press goes one page, a long one to the end.
Item {
    id: assistant

    property bool canScrollUp: true
    property bool canScrollDown: true
    // Of the buttons.
    property real radius: GlobalValues.dialogRadius
    property real borderWidth: GlobalValues.defaultSolidSeparatorThickness

    signal scrollUp()
    signal scrollDown()
    signal scrollBegin()
    signal scrollEnd()

    implicitHeight: GlobalValues.scrollListButtonsHeight

    component Button: BitmapButton {
        id: button

        property real radius
        property real borderWidth

        width: Global.mm(14)
        height: parent.height
        background: Item {
            clip: true

            Rectangle {
                width: parent.width
                height: parent.height + radius
                radius: button.radius
                border.width: button.borderWidth
                border.color: GlobalValues.defaultBorderColor
                color: button.held ? GlobalValues.defaultHoveredColor : GlobalValues.defaultBackgroundColor
            }
        }
    }

    // What scrolls past is not to be read between the buttons. It ends like the dialog that it is the foot of.
    Item {
        anchors.fill: parent
        clip: true

        Rectangle {
            y: -radius
            width: parent.width
            height: parent.height + radius
            radius: GlobalValues.dialogRadius
            color: GlobalValues.defaultBackgroundColor
        }
    }
    Button {
        anchors.left: parent.left
        anchors.leftMargin: Global.mm(3)
        radius: assistant.radius
        borderWidth: assistant.borderWidth
        enabled: assistant.canScrollUp
        image: Global.getNormalImage("scroll_up")
        pressedImage: Global.getInvertedImage("scroll_up")
        disabledImage: Global.getNormalImage("scroll_up_disabled")
        text: qsTr("@ScrollUp")
        onClicked: assistant.scrollUp()
        onPressAndHold: assistant.scrollBegin()
    }
    Button {
        anchors.right: parent.right
        anchors.rightMargin: Global.mm(3)
        radius: assistant.radius
        borderWidth: assistant.borderWidth
        enabled: assistant.canScrollDown
        image: Global.getNormalImage("scroll_down")
        pressedImage: Global.getInvertedImage("scroll_down")
        disabledImage: Global.getNormalImage("scroll_down_disabled")
        text: qsTr("@ScrollDown")
        onClicked: assistant.scrollDown()
        onPressAndHold: assistant.scrollEnd()
    }
}
