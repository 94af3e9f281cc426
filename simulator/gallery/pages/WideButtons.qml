import QtQuick
import com.tessaly.controls 1.0
import ".."

Page {
    title: "Wide buttons"

    BitmapTextButton {
        width: parent.width
        image: "wb_download"
        text: Fmt.sprintfTr("@DownloadMorphology", [undefined])
    }
    BitmapTextButton {
        width: parent.width
        image: "done"
        interactive: false
        text: Fmt.sprintfTr("@MorphologyHasBeenInstalled", ["German"])
    }
    TextButton {
        width: parent.width
        text: qsTr("@AddNewDictionaries").toUpperCase()
    }
    TextButton {
        width: parent.width
        text: "%1 (%2)".arg(qsTr("@Download")).arg(12).toUpperCase()
        down: true
    }
    DialogFooter {
        applyTitle: qsTr("@Terminate")
        cancelTitle: qsTr("@Wait")
    }
    DialogFooter {
        applyTitle: qsTr("@Stop")
        cancelTitle: qsTr("@ContinueDownloading")
        canApply: false
    }
    RoundedCornerTextButton {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Global.dp(268)
        title: qsTr("@Delete").toUpperCase()
        visibleBorders: [1, 1, 0, 1]
        borderWidth: 1
        radius: 9
    }
}
