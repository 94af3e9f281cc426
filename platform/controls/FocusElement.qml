import QtQuick
import com.tessaly.controls.device

// The frame around what has the focus, on devices with keys only. It is made when it is first to be seen: every row of
// every list has one.
Loader {
    property Item target: parent
    readonly property bool wanted: !DeviceInfoProvider.touch && target !== null && target.activeFocus

    anchors.fill: parent
    z: 10
    visible: wanted
    onWantedChanged: if (wanted) source = Qt.resolvedUrl("FocusFrame.qml")
}
