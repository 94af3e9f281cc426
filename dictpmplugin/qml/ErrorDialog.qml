import QtQuick 2.0
import com.tessaly.controls 1.0

// Asks whether to go on waiting for a server that is slow: `cancel` waits, `apply` terminates.
DialogContainer {
    id: wrapper

    anchors.fill: parent
    dialogWidth: GlobalValues.infoMessageWidth
    backOnPgUp: true
    state: "VerticalBottom"
    headless: true
    title: message.text
    initialFocusItem: footer
    onBack: close()

    Item {
        width: GlobalValues.infoMessageWidth
        height: GlobalValues.infoMessageHeight

        Image {
            id: icon
            anchors.left: parent.left
            anchors.leftMargin: GlobalValues.dialogSidePadding
            anchors.verticalCenter: parent.verticalCenter
            source: Global.imageForScreen("image://resource/icon_error")
        }
        StyledText {
            id: message
            anchors.left: icon.right
            anchors.leftMargin: GlobalValues.dialogSidePadding
            anchors.right: parent.right
            anchors.rightMargin: GlobalValues.dialogSidePadding
            height: parent.height
            text: qsTr("@CantDownloadDictionariesServerIsRespondingTooLong")
            horizontalAlignment: Text.AlignLeft
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap
            elide: Text.ElideRight
        }
    }
    DialogFooter {
        id: footer
        focus: true
        applyTitle: qsTr("@Terminate")
        cancelTitle: qsTr("@Wait")
        onApply: wrapper.apply()
        onCancel: wrapper.cancel()
    }
}
