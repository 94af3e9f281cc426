import QtQuick
import com.tessaly.dictionaries 1.0

// The dictionaries interface on a screen that has its size from the start, as a device's has.
Window {
    width: 758
    height: 1024
    visible: true

    FocusScope {
        width: 758
        height: 1024
        focus: true

        Controller {
            focus: true
            Component.onCompleted: showDicts()
        }
    }
}
