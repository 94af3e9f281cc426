import QtQuick
import com.tessaly.controls 1.0

// Those that go by themselves, and those that want to be acknowledged, of which the lowest has the focus.
Item {
    InfoMessage {
        bottomOffset: Global.mm(65)
        Component.onCompleted: showFor(qsTr("@NoNewDictionaries"), "", 60000)
    }
    InfoMessage {
        bottomOffset: Global.mm(37)
        Component.onCompleted: showFor(qsTr("@DictionaryWasDeleted").arg("Chinese (Simplified, Singapore)")
                                       .arg("Norwegian"), "", 60000)
    }
    InfoMessage {
        bottomOffset: Global.mm(9)
        Component.onCompleted: showFor(qsTr("@InsufficientStorageSpace"), "image://resource/icon_error", 60000)
    }
    InfoMessage {
        Component.onCompleted: {
            showFor(qsTr("@ThereIsAnIssueWithDownloadingSelectedDictionaries"), "image://resource/icon_error", 60000)
            forceActiveFocus()
        }
    }
}
