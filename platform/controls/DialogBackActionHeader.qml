import QtQuick

// The header of a screen: a way back at the left, its title, an action at the right.
FocusScope {
    id: header

    property alias text: label.text
    property bool backwardAvailable: false
    property bool actionAvailable: actionIcon !== ""
    // Whether what is shown can be used now.
    property bool canBack: true
    property bool canAction: true
    property string actionIcon
    property string actionPressedIcon
    property string actionName: qsTr("@Close")
    readonly property bool focusable: (backwardAvailable && canBack) || (actionAvailable && canAction)

    signal back()
    signal action()

    implicitHeight: GlobalValues.dialogHeaderHeight

    // Only one of the two may be there.
    onActiveFocusChanged: {
        if (!activeFocus || !focusable)
            return
        if (!canTake(actionButton) || (canTake(backButton) && !actionButton.activeFocus))
            backButton.forceActiveFocus()
        else
            actionButton.forceActiveFocus()
    }

    function canTake(button: Item): bool {
        return button.visible && button.enabled
    }

    BitmapButton {
        id: backButton
        anchors.left: parent.left
        anchors.leftMargin: Global.mm(1)
        width: GlobalValues.dialogHeaderHeight
        height: parent.height
        visible: header.backwardAvailable
        enabled: header.canBack
        image: Global.getNormalImage("arrow_back")
        pressedImage: Global.getInvertedImage("arrow_back")
        disabledImage: Global.getNormalImage("arrow_back_disabled")
        text: qsTr("@Back")
        KeyNavigation.right: actionButton.visible && actionButton.enabled ? actionButton : null
        onClicked: header.back()
    }
    StyledText {
        id: label
        anchors.left: backButton.visible ? backButton.right : parent.left
        anchors.leftMargin: backButton.visible ? Global.mm(1) : GlobalValues.dialogSidePadding
        anchors.right: actionButton.visible ? actionButton.left : parent.right
        anchors.rightMargin: actionButton.visible ? Global.mm(1) : GlobalValues.dialogSidePadding
        anchors.verticalCenter: parent.verticalCenter
        fontStyle: FontStyles.BodyBold
        elide: Text.ElideRight
        wrapMode: Text.Wrap
        maximumLineCount: 2
        lineHeight: 0.9
    }
    BitmapButton {
        id: actionButton
        anchors.right: parent.right
        anchors.rightMargin: Global.mm(1)
        width: GlobalValues.dialogHeaderHeight
        height: parent.height
        visible: header.actionAvailable
        enabled: header.canAction
        image: header.actionIcon
        pressedImage: header.actionPressedIcon
        disabledImage: header.actionIcon ? header.actionIcon + "_disabled" : ""
        text: header.actionName
        KeyNavigation.left: backButton.visible && backButton.enabled ? backButton : null
        onClicked: header.action()
    }
    SolidSeparator {
        x: GlobalValues.dialogHeaderSeparatorSideOffset
        width: parent.width - 2 * x
        anchors.bottom: parent.bottom
    }
}
