import QtQuick
import com.tessaly.controls 1.0

// A dialog over the whole screen with a list.
DialogContainer {
    id: dialog
    headless: true

    DialogBackActionHeader {
        width: parent.width
        text: qsTr("@SelectDictionariesToDownload")
        backwardAvailable: true
        actionIcon: DeviceInfoProvider.touch ? "image://resource/close" : ""
    }
    Item {
        width: parent.width
        height: dialog.height - 3 * GlobalValues.dialogHeaderHeight

        CachedListView {
            anchors.fill: parent
            clip: true
            model: ["English", "French", "German", "Russian"]
            delegate: SectionHeader {
                required property string modelData
                required property int index

                enabled: index !== 1
                title: modelData

                FocusElement { }
            }
            Component.onCompleted: listBehaviour.activeFocusIndex = 1
        }
        ScrollIndicator {
            anchors.right: parent.right
            length: parent.height
            thumbLength: parent.height / 3
            thumbOffset: parent.height / 6
        }
    }
}
