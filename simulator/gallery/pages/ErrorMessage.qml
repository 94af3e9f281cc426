import QtQuick
import com.tessaly.controls 1.0

Item {
    InfoMessage {
        bottomOffset: Global.mm(40)
        Component.onCompleted: showFor(qsTr("@InsufficientStorageSpace"), "image://resource/icon_error", 60000)
    }
    InfoMessage {
        Component.onCompleted: {
            showFor(qsTr("@ThereIsAnIssueWithDownloadingSelectedDictionaries"), "image://resource/icon_error", 60000)
            forceActiveFocus()
        }
    }
}
