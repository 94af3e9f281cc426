import QtQuick

// Page buttons at both ends of a bar: a press goes one page, a long one to the end.
Item {
    id: assistant

    property bool canScrollUp: true
    property bool canScrollDown: true

    signal scrollUp()
    signal scrollDown()
    signal scrollBegin()
    signal scrollEnd()

    implicitHeight: GlobalValues.scrollListButtonsHeight

    component Button: BitmapButton {
        id: button

        width: Global.mm(14)
        height: parent.height
        background: Item {
            clip: true

            Rectangle {
                width: parent.width
                height: parent.height + radius
                radius: GlobalValues.dialogRadius
                border.width: GlobalValues.defaultSolidSeparatorThickness
                border.color: GlobalValues.defaultBorderColor
                color: button.held ? GlobalValues.defaultHoveredColor : GlobalValues.defaultBackgroundColor
            }
        }
    }

    // What scrolls past is not to be read between the buttons.
    Rectangle {
        anchors.fill: parent
        color: GlobalValues.defaultBackgroundColor
    }
    Button {
        anchors.left: parent.left
        anchors.leftMargin: Global.mm(3)
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
        enabled: assistant.canScrollDown
        image: Global.getNormalImage("scroll_down")
        pressedImage: Global.getInvertedImage("scroll_down")
        disabledImage: Global.getNormalImage("scroll_down_disabled")
        text: qsTr("@ScrollDown")
        onClicked: assistant.scrollDown()
        onPressAndHold: assistant.scrollEnd()
    }
}
