import QtQuick
import com.tessaly.dictionaries 1.0

// The dictionaries interface over the page, with a way back whatever it shows.
FocusScope {
    id: layer

    signal ended()

    function open() {
        layer.forceActiveFocus()
        controller.showDicts()
    }

    function endWork() {
        DictPMController.cancelDownloading()
    }

    Keys.onBackPressed: layer.ended()

    // What is behind isn't there for fingers.
    MouseArea {
        anchors.fill: parent
    }
    Controller {
        id: controller
        focus: true
        onClose: layer.ended()
        onInstalled: layer.ended()
    }
}
