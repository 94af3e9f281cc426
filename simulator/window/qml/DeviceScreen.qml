import QtQuick
import com.tessaly.controls

// What the device shows: the reader, and over it the dictionaries interface. Exactly as large as the device's screen.
FocusScope {
    id: screen

    readonly property bool dictionariesOpen: dictionaries.visible

    function openDictionaries() {
        dictionaries.active = true
        dictionaries.visible = true
        const layer = dictionaries.item as DictionariesLayer
        layer.open()
    }

    function closeDictionaries() {
        dictionaries.visible = false
        reader.forceActiveFocus()
    }

    // Ends what the dictionaries interface still does in the background.
    function endWork() {
        const layer = dictionaries.item as DictionariesLayer
        if (layer)
            layer.endWork()
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
        sourceComponent: DictionariesLayer {
            onEnded: screen.closeDictionaries() // qmllint disable unqualified
        }
    }
    Item {
        id: above
        anchors.fill: parent
    }
    // Fingers do nothing on a screen that can't feel them.
    MouseArea {
        anchors.fill: parent
        visible: !DeviceInfoProvider.touch
        onWheel: wheel => wheel.accepted = true
    }
}
