import QtQuick

// The two answers to a dialog.
FocusScope {
    id: footer

    property string applyTitle
    property string cancelTitle
    property bool canApply: true
    property bool canCancel: true
    readonly property bool focusable: true

    signal apply()
    signal cancel()

    width: parent ? parent.width : implicitWidth
    implicitHeight: GlobalValues.dialogBottomButtonsHeight
    onVisibleChanged: if (visible) cancelButton.focus = true // each question begins with the harmless answer

    SolidSeparator {
        width: parent.width
    }
    TextButton {
        id: cancelButton
        focus: true
        width: Math.floor(parent.width / 2)
        height: parent.height
        text: footer.cancelTitle
        enabled: footer.canCancel
        KeyNavigation.right: applyButton
        onClicked: footer.cancel()
    }
    TextButton {
        id: applyButton
        anchors.right: parent.right
        width: parent.width - cancelButton.width
        height: parent.height
        text: footer.applyTitle
        enabled: footer.canApply
        onEnabledChanged: if (!enabled && focus) cancelButton.focus = true
        KeyNavigation.left: cancelButton
        onClicked: footer.apply()
    }
    SolidSeparator {
        x: cancelButton.width
        width: GlobalValues.defaultSolidSeparatorThickness
        height: parent.height
    }
}
