import QtQuick
import com.tessaly.dictionaries 1.0

// The dictionaries interface on a screen that has its size from the start, as a device's has.
Window {
    width: 758
    height: 1024
    visible: true

    function leave() {
        controller.visible = false
    }

    function showAgain() {
        controller.forceActiveFocus()
        controller.showDicts()
    }

    FocusScope {
        width: 758
        height: 1024
        focus: true

        Controller {
            id: controller
            focus: true
            onClose: visible = false
            Component.onCompleted: showDicts()
        }
    }
}
