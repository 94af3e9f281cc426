import QtQuick 2.12
import com.tessaly.controls 1.0
import com.tessaly.dictionaries 1.0

// The frame around what is known of a dictionary.
DialogContainer {
    id: wrapper

    property alias info: dictionary_info.info
    property alias title_text: wrapper.title
    property MorphExplorer morphExplorer

    signal deleteDict()

    dialogWidth: GlobalValues.defaultDialogWidth
    title: info.title
    state: "VerticalCenter"
    headless: true
    backOnPgUp: true
    initialFocusItem: DeviceInfoProvider.touch ? dictionary_info.focusItem : header

    onVisibleChanged: {
        if (visible && !DeviceInfoProvider.touch)
            header.focus = true
    }

    DialogBackActionHeader {
        id: header
        width: parent.width
        focus: !DeviceInfoProvider.touch
        text: wrapper.title
        backwardAvailable: true
        actionAvailable: DeviceInfoProvider.touch || !DictionariesListModel.isDownloadMode
        actionIcon: DeviceInfoProvider.touch ? "image://resource/close" : "image://resource/trash_small"
        actionPressedIcon: DeviceInfoProvider.touch ? "image://resource/close_inv" : "image://resource/trash_small"
        actionName: DeviceInfoProvider.touch ? qsTr("@Close") : qsTr("@Delete")
        KeyNavigation.up: dictionary_info.contentScrollable ? dictionary_info : header
        KeyNavigation.down: dictionary_info.contentScrollable ? dictionary_info : header
        onBack: wrapper.back()
        onAction: DeviceInfoProvider.touch ? wrapper.close() : wrapper.deleteDict()
    }
    Item {
        width: parent.width
        height: wrapper.height - 3 * GlobalValues.dialogHeaderHeight
        KeyNavigation.up: header
        KeyNavigation.down: header

        DictionaryInfoPanel {
            id: dictionary_info
            anchors.fill: parent
            morphExplorer: wrapper.morphExplorer
            onDeleteDict: wrapper.deleteDict()
            onBack: wrapper.back()
        }
    }
}
