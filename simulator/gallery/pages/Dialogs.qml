import QtQuick
import com.tessaly.dictionaries 1.0

// How far a download is, its end, and the question whether to go on waiting for the server.
Column {
    Repeater {
        model: ["DownloadProgress", "DownloadProgress", "ErrorDialog"]

        Loader {
            required property string modelData
            required property int index

            width: parent.width
            height: parent.height / 3
            source: "qrc:/qml/" + modelData + ".qml"
            onLoaded: {
                item.focusOnFirstElement()
                if (index === 2)
                    return
                item.selectedCount = 2
                item.isDownloding = index === 0
                if (index === 1)
                    item.title = qsTr("@SuccessfullyDownloaded")
            }
        }
    }
}
