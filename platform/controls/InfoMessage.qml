import QtQuick

// A message at the bottom of its parent that goes by itself. Whoever shows it hides it on `close`.
FocusScope {
    id: message

    property string text
    property string icon
    property int autohideInterval: 3000 // milliseconds
    // How far above the buttons at the bottom of the dialogs behind; 0 is at the bottom of the screen.
    property real bottomOffset: 0

    signal close()
    // It was hidden together with what it stands in, and doesn't come back.
    signal over()

    function showWithMessage(text: string) {
        message.text = text
        visible = true
        if (visible)
            autohide.restart()
        else // what it stands in isn't shown: nobody would read it
            visible = false
    }

    function showFor(text: string, icon: string, milliseconds: int) {
        message.icon = icon
        autohideInterval = milliseconds
        showWithMessage(text)
    }

    function hide() {
        autohide.stop()
        visible = false
    }

    function dismiss() {
        autohide.stop()
        close()
    }

    anchors.fill: parent
    onVisibleChanged: {
        if (visible || !autohide.running)
            return
        hide()
        over()
    }

    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter && !Global.leadsOut(event.key, false))
            return
        event.accepted = true
        message.dismiss()
    }

    Timer {
        id: autohide
        interval: message.autohideInterval
        onTriggered: message.close()
    }
    Rectangle {
        anchors.fill: frame
        anchors.margins: -GlobalValues.boxGap
        radius: frame.radius
        color: frame.color
    }
    Rectangle {
        id: frame
        width: GlobalValues.infoMessageWidth
        height: Math.max(message.icon ? GlobalValues.infoMessageHeight : 0, label.implicitHeight + 2 * Global.mm(4))
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: message.bottomOffset <= 0 ? GlobalValues.screenMargin
            : message.bottomOffset + GlobalValues.dialogHeaderHeight + GlobalValues.dialogBottomButtonsHeight
        color: GlobalValues.defaultBackgroundColor
        border.width: GlobalValues.defaultBorderThickness
        border.color: GlobalValues.defaultBorderColor
        radius: GlobalValues.dialogRadius

        Image {
            id: image
            x: GlobalValues.dialogSidePadding
            width: message.icon ? implicitWidth : 0
            anchors.verticalCenter: parent.verticalCenter
            source: Global.imageForScreen(message.icon)
        }
        StyledText {
            id: label
            anchors.left: image.right
            anchors.leftMargin: message.icon ? GlobalValues.dialogSidePadding : 0
            anchors.right: parent.right
            anchors.rightMargin: GlobalValues.dialogSidePadding
            anchors.verticalCenter: parent.verticalCenter
            text: message.text
            wrapMode: Text.Wrap
            horizontalAlignment: message.icon ? Text.AlignLeft : Text.AlignHCenter
        }
        TapHandler {
            onTapped: message.dismiss()
        }
        FocusElement {
            target: message
        }
    }
}
