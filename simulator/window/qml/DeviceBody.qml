import QtQuick
import com.tessaly.controls.device
import Tessaly.Simulator

// The device as one holds it: the screen, fitted into the room there is, and on a device with keys its buttons beneath.
FocusScope {
    id: body

    property bool touch: true
    // Whether the screen is drawn as electronic paper draws.
    property bool paper: false
    property alias paperScreen: paperScreen
    readonly property real rim: 28
    readonly property real keysHeight: touch ? 0 : keys.height + rim / 2
    // At the screen's own size.
    readonly property real fullWidth: screen.width + 4 * rim
    readonly property real fullHeight: screen.height + 4 * rim + keysHeight
    readonly property real factor: Math.max(0.05, Math.min((width - 4 * rim) / screen.width,
                                                           (height - 4 * rim - keysHeight) / screen.height))

    function endWork() {
        screen.endWork()
    }

    function showAbove(item: Item) {
        screen.showAbove(item)
    }

    Rectangle {
        id: casing
        anchors.centerIn: parent
        width: Math.max(place.width, body.touch ? 0 : keys.width) + 2 * body.rim
        height: place.height + 2 * body.rim + body.keysHeight
        radius: body.rim * 0.8
        color: "#4a4a4a"
        border.color: "#2c2c2c"

        Rectangle {
            id: place
            anchors.horizontalCenter: parent.horizontalCenter
            y: body.rim
            width: Math.floor(screen.width * body.factor)
            height: Math.floor(screen.height * body.factor)

            DeviceScreen {
                id: screen
                objectName: "deviceScreen"
                focus: true
                scale: body.factor
                transformOrigin: Item.TopLeft
            }
            // Drawn at its own size and then scaled as a picture: thin lines don't fall between two pixels.
            ShaderEffectSource {
                objectName: "devicePicture"
                anchors.fill: parent
                visible: body.factor !== 1
                sourceItem: visible ? screen : null
                hideSource: true
            }
            PaperScreen {
                id: paperScreen
                anchors.fill: parent
                visible: body.paper
                screen: screen
                fast: DeviceInfoProvider.inA2
            }
        }
        KeyPad {
            id: keys
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.top: place.bottom
            anchors.topMargin: body.rim / 2
            visible: !body.touch
        }
    }
}
