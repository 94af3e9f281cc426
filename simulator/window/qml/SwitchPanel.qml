import QtQuick
import Tessaly.Simulator

// The simulator's own switches: what surrounds the device, and what can happen to it.
Rectangle {
    id: panel

    property DeviceSwitches device

    color: "#fafafa"

    Rectangle {
        width: 1
        height: parent.height
        color: "#bdbdbd"
    }
    Flickable {
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

            PanelHeading {
                text: "Network"
            }
            PanelSwitch {
                text: "Network in reach"
                checked: panel.device.networkReachable
                onToggled: panel.device.networkReachable = !checked
            }
            PanelText {
                text: panel.device.connected ? "The device is connected." : "The device is not connected."
            }
            PanelText {
                text: "Connecting takes"
            }
            PanelChoice {
                model: [{ name: 300, label: "0.3 s" }, { name: 3000, label: "3 s" }, { name: 20000, label: "20 s" }]
                current: panel.device.connectDelayMs
                onChosen: name => panel.device.connectDelayMs = name
            }

            PanelHeading {
                text: "Dictionary server"
            }
            PanelSwitch {
                text: "Runs"
                checked: panel.device.serverUp
                onToggled: panel.device.serverUp = !checked
            }
            PanelSwitch {
                text: "Slow"
                checked: panel.device.serverSlow
                onToggled: panel.device.serverSlow = !checked
            }

            PanelHeading {
                text: "Device"
            }
            PanelChoice {
                vertical: true
                model: panel.device.profiles
                current: panel.device.profile
                onChosen: name => panel.device.profile = name
            }
            PanelText {
                text: "Language of the interface"
            }
            PanelChoice {
                model: panel.device.languages
                current: panel.device.language
                onChosen: name => panel.device.language = name
            }
            PanelSwitch {
                text: "Storage full (16 KB free)"
                checked: panel.device.storageFull
                onToggled: panel.device.storageFull = !checked
            }
            PanelSwitch {
                text: "Debug mode"
                checked: panel.device.debugMode
                onToggled: panel.device.debugMode = !checked
            }

            PanelHeading {
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
            PanelText {
                text: panel.device.note
            }
        }
    }
}
