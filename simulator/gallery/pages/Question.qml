import QtQuick
import com.tessaly.controls 1.0

Item {
    ConfirmationDialog {
        id: dialog
        title: qsTr("@AreYouSureYouWanDeletDictionary?").arg("English").arg("Norwegian (FreeDict)")
        Component.onCompleted: dialog.focusOnFirstElement()
    }
    DialogContainer {
        state: "VerticalBottom"
        title: qsTr("@DownloadingDictionaries", "", 5).arg(5)
        enabled: false

        StyledText {
            width: parent.width
            padding: GlobalValues.dialogSidePadding
            text: qsTr("@DictionaryPackage")
        }
        DialogFooter {
            applyTitle: qsTr("@OK")
            cancelTitle: qsTr("@Cancel")
        }
    }
}
