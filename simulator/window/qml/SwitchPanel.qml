import QtQuick
import Tessaly.Simulator

// The simulator's own switches: what surrounds the device, and what can happen to it.
Rectangle {
    id: panel

    property DeviceSwitches device
    property PaperScreen paperScreen
    property bool paper: false

    component Label: Text {
        width: parent ? parent.width : 0
        color: "#303030"
        font.pixelSize: 14
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
    component Heading: Label {
        topPadding: 14
        font.pixelSize: 15
        font.bold: true
        color: "black"
    }
    // One of several, side by side or one beneath the other: objects with a `name`, which is the value, and a `label`.
    component Choice: Grid {
        id: choice

        property var model: []
        property var current
        property bool vertical: false

        signal chosen(var name)

        width: parent ? parent.width : 0
        columns: vertical ? 1 : model.length
        spacing: 4

        Repeater {
            model: choice.model
            // qmllint disable unqualified
            delegate: PanelButton {
                required property var modelData
                width: (choice.width + choice.spacing) / choice.columns - choice.spacing
                text: modelData.label
                marked: modelData.name === choice.current
                onClicked: choice.chosen(modelData.name)
            }
            // qmllint enable unqualified
        }
    }

    color: "#fafafa"

    Rectangle {
        width: 1
        height: parent.height
        color: "#bdbdbd"
    }
    // There is more below.
    Label {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 4
        z: 1
        width: implicitWidth
        visible: !area.atYEnd
        text: "▼"
    }
    Flickable {
        id: area
        anchors.fill: parent
        anchors.leftMargin: 20
        contentHeight: column.height + 40
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: column
            y: 20
            width: parent.width - 20
            spacing: 8

            Heading {
                text: "Network"
            }
            PanelButton {
                checkable: true
                text: "Network in reach"
                marked: panel.device.state.networkReachable
                onClicked: panel.device.set("networkReachable", !marked)
            }
            Label {
                text: panel.device.state.connected ? "The device is connected." : "The device is not connected."
            }
            Label {
                text: "Connecting takes"
            }
            Choice {
                model: [{ name: 300, label: "0.3 s" }, { name: 3000, label: "3 s" }, { name: 20000, label: "20 s" }]
                current: panel.device.state.connectDelayMs
                onChosen: name => panel.device.set("connectDelayMs", name)
            }

            Heading {
                text: "Dictionary server"
            }
            PanelButton {
                checkable: true
                text: "Runs"
                marked: panel.device.serverUp
                onClicked: panel.device.serverUp = !marked
            }
            PanelButton {
                checkable: true
                text: "Slow"
                marked: panel.device.serverSlow
                onClicked: panel.device.serverSlow = !marked
            }

            Heading {
                text: "Device"
            }
            Choice {
                vertical: true
                model: panel.device.profiles
                current: panel.device.state.profile
                onChosen: name => panel.device.set("profile", name)
            }
            Label {
                text: "Language of the interface"
            }
            Choice {
                model: panel.device.languages
                current: panel.device.state.language
                onChosen: name => panel.device.set("language", name)
            }
            PanelButton {
                checkable: true
                text: "Storage full (16 KB free)"
                marked: panel.device.state.storageFull
                onClicked: panel.device.set("storageFull", !marked)
            }
            PanelButton {
                checkable: true
                text: "Debug mode"
                marked: panel.device.state.debugMode
                onClicked: panel.device.set("debugMode", !marked)
            }

            PanelButton {
                checkable: true
                text: "Electronic paper"
                marked: panel.paper
                onClicked: panel.paper = !marked
            }
            Label {
                visible: panel.paper
                text: "Updates since the last key or touch: %1, over %2 % of the screen."
                    .arg(panel.paperScreen.updates).arg(Math.round(100 * panel.paperScreen.area))
            }

            Heading {
                text: "Accidents"
            }
            PanelButton {
                text: "Kill the installer"
                onClicked: panel.device.killInstaller()
            }
            PanelButton {
                text: "Lose power"
                onClicked: panel.device.losePower()
            }
            Label {
                text: panel.device.note
            }
        }
    }
}
