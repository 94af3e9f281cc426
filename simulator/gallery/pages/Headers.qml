import QtQuick
import com.tessaly.controls 1.0
import ".."

Page {
    title: "Headers"

    Repeater {
        model: [
            { text: qsTr("@SelectDictionary"), back: false, action: true },
            { text: qsTr("@SelectDictionariesToDownload"), back: true, action: true },
            { text: qsTr("@SelectDictionary"), back: false, action: false },
            { text: "Chinese (Simplified, Singapore) ⇾ Norwegian (Dictionary of idioms)", back: true, action: true },
            { text: qsTr("@SelectDictionary"), back: true, action: true, dead: true }
        ]

        DialogBackActionHeader {
            required property var modelData
            required property int index

            width: parent.width
            text: modelData.text
            backwardAvailable: modelData.back
            canBack: !modelData.dead
            canAction: !modelData.dead
            actionIcon: modelData.action ? "image://resource/close" : ""
            actionPressedIcon: "image://resource/close_inv"
            Component.onCompleted: if (index === 1) forceActiveFocus()
        }
    }
    SectionHeader {
        title: "English"
    }
    SectionHeader {
        title: "Chinese (Simplified, Singapore) and a name far too long for one line"
    }
}
