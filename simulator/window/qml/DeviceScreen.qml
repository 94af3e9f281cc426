import QtQuick
import com.tessaly.controls
import com.tessaly.dictionaries 1.0
import Tessaly.Simulator

// What the device shows: the reader, and over it the dictionaries interface. Exactly as large as the device's screen.
FocusScope {
    id: screen

    function openDictionaries() {
        dictionaries.active = true
        dictionaries.visible = true
        dictionaries.item.forceActiveFocus()
        dictionaries.item.showDicts()
    }

    function closeDictionaries() {
        dictionaries.visible = false
        reader.forceActiveFocus()
    }

    // Ends what the dictionaries interface still does in the background.
    function endWork() {
        if (dictionaries.item)
            DictPMController.cancelDownloading()
    }

    function showAbove(item: Item) {
        item.parent = above
    }

    width: DeviceInfoProvider.screenWidth
    height: DeviceInfoProvider.screenHeight
    clip: true

    Rectangle {
        anchors.fill: parent
        color: GlobalValues.defaultBackgroundColor
    }
    ReaderPage {
        id: reader
        anchors.fill: parent
        focus: true
        onDictionariesWanted: screen.openDictionaries()
    }
    Loader {
        id: dictionaries
        anchors.fill: parent
        active: false
        visible: false
        // qmllint disable unqualified
        sourceComponent: FocusScope {
            function showDicts() {
                controller.showDicts()
            }

            // A way back, whatever the interface shows.
            Keys.onBackPressed: screen.closeDictionaries()

            // What is behind isn't there for fingers.
            MouseArea {
                anchors.fill: parent
            }
            Controller {
                id: controller
                focus: true
                onClose: screen.closeDictionaries()
                onInstalled: screen.closeDictionaries()
            }
        }
        // qmllint enable unqualified
    }
    Item {
        id: above
        anchors.fill: parent
    }
    // The network agent speaks over whatever is shown, and leaves the focus where it is.
    AgentNotice {
        id: agent
    }
    Timer {
        interval: 5000
        running: agent.kind === AgentNotice.NoNetwork
        onTriggered: agent.takeBack()
    }
    InfoMessage {
        visible: agent.kind !== AgentNotice.None
        bottomOffset: Global.dp(47)
        text: agent.kind === AgentNotice.Connecting ? qsTr("@AgentConnecting") : qsTr("@AgentNoNetwork")
        onClose: agent.takeBack()
    }
    // Fingers do nothing on a screen that can't feel them.
    MouseArea {
        anchors.fill: parent
        visible: !DeviceInfoProvider.touch
        onWheel: wheel => wheel.accepted = true
    }
}
