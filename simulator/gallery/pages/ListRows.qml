import QtQuick
import com.tessaly.controls 1.0
import com.tessaly.dictionaries 1.0
import ".."

Page {
    title: "The list's rows and its button"

    Repeater {
        model: [
            { selected: true },
            { hovered: true },
            { focused: true },
            { downloadMode: true },
            { downloadMode: true, marked: true },
            { downloadMode: true, installed: true }
        ]

        DictionaryListItem {
            required property var modelData

            width: parent.width
            title: "English → German"
            provider: "FreeDict"
            selected: modelData.selected ?? false
            hovered: modelData.hovered ?? false
            downloadMode: modelData.downloadMode ?? false
            selectedToDownload: modelData.marked ?? false
            installed: modelData.installed ?? false
            Component.onCompleted: if (modelData.focused) forceActiveFocus()
        }
    }
    Grid {
        id: buttons
        width: parent.width
        columns: 2

        Repeater {
            model: [{ }, { state: "Pressed" }, { state: "Disabled" }, { state: "Disabled", busy: true }]

            ImgBusyIndicatorTextButton {
                required property var modelData

                width: buttons.width / 2
                enabled: modelData.state !== "Disabled"
                state: modelData.state ?? "Normal"
                busy_visible: modelData.busy ?? false
                icon: "panel_package_downloading"
                disabled_icon: icon + "_disabled"
                text: "%1 (2)".arg(qsTr("@Download")).toUpperCase()
                showLongPressText: !DeviceInfoProvider.touch
            }
        }
    }
}
