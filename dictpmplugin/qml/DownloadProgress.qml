import QtQuick 2.0
import com.tessaly.controls 1.0
import com.tessaly.dictionaries 1.0

// How far the download of the marked dictionaries is; in the end, that it succeeded.
DialogContainer {
    id: wrapper

    property int selectedCount: DictionariesListModel.selectedCount
    property bool isDownloding: true

    dialogWidth: GlobalValues.defaultDialogWidth
    backOnPgUp: true
    state: "VerticalCenter"
    title: qsTr("@DownloadingDictionaries", "", selectedCount).arg(selectedCount)
    initialFocusItem: cancel_button
    onBack: close()
    onVisibleChanged: {
        if (!visible)
            return
        selectedCount = DictionariesListModel.selectedCount
        title = qsTr("@DownloadingDictionaries", "", selectedCount).arg(selectedCount)
        isDownloding = true
        bottom_spacer.height = Global.dp(24)
    }

    Connections {
        target: DictPMController
        function onSyncFinished(success) {
            if (!success)
                return // reported as an error, which the controller shows
            wrapper.title = qsTr("@SuccessfullyDownloaded")
            wrapper.isDownloding = false
            bottom_spacer.height = Global.dp(18)
        }
    }

    Item {
        width: parent.width
        height: Global.dp(15) + Math.max(image.height, lines.y + lines.height - image.y)

        Item {
            id: top_spacer
            width: parent.width
            height: Global.dp(15)
        }
        Image {
            id: image
            anchors.top: top_spacer.bottom
            anchors.left: parent.left
            anchors.leftMargin: Global.dp(10)
            source: Global.getNormalImage("desktop_app_dictionary")
        }
        Item {
            id: lines
            anchors.top: image.top
            anchors.topMargin: Global.dp(9.5)
            anchors.left: image.right
            anchors.leftMargin: Global.dp(10)
            anchors.right: parent.right
            height: wrapper.isDownloding ? percentage.y + percentage.height : text.height

            StyledText {
                id: text
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.rightMargin: Global.dp(10)
                text: wrapper.isDownloding
                    ? qsTr("@DictionaryPackage")
                    : qsTr("@DictionariesHaveBeenDownloaded", "", wrapper.selectedCount).arg(wrapper.selectedCount)
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text.text
            }
            ProgressBar {
                id: progress_bar
                anchors.top: text.bottom
                anchors.topMargin: Global.dp(9.5)
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.rightMargin: Global.dp(85)
                height: Global.dp(6.5)
                visible: wrapper.isDownloding
                value: DictPMController.progress
            }
            StyledText {
                id: percentage
                anchors.top: text.bottom
                anchors.topMargin: Global.dp(2)
                anchors.left: progress_bar.right
                anchors.leftMargin: Global.dp(20)
                visible: wrapper.isDownloding
                text: "%1%".arg(DictPMController.progress)
                fontStyle: FontStyles.BodyS
                font.bold: true
            }
        }
    }
    Item {
        id: bottom_spacer
        width: parent.width
        height: Global.dp(24.5)
    }
    SolidSeparator {
        width: parent.width
    }
    TextButton {
        id: cancel_button
        width: parent.width
        height: GlobalValues.dialogBottomButtonsHeight
        focus: true
        enabled: !DictPMController.isInstalling || !wrapper.isDownloding
        text: (wrapper.isDownloding ? qsTr("@Cancel") : qsTr("@OK")).toUpperCase()
        fontStyle: FontStyles.Heading5
        onClicked: wrapper.isDownloding ? wrapper.cancel() : wrapper.apply()
    }
}
