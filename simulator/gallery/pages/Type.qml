import QtQuick
import com.tessaly.controls 1.0
import ".."

Page {
    title: "Type"

    Repeater {
        model: [
            { name: "Body", style: FontStyles.Body },
            { name: "BodyBold", style: FontStyles.BodyBold },
            { name: "BodyS", style: FontStyles.BodyS },
            { name: "BodyL", style: FontStyles.BodyL },
            { name: "Heading2", style: FontStyles.Heading2 },
            { name: "Heading5", style: FontStyles.Heading5 }
        ]

        StyledText {
            required property var modelData

            width: parent.width
            fontStyle: modelData.style
            wrapMode: Text.Wrap
            text: modelData.name + ": " + qsTr("@NoInformationAboutDictionary")
                  + " ⇾ → “ä” «ß» Ωμέγα, ёлка, ŝ, ẹ̀kọ́, עברית"
        }
    }
    StyledText {
        color: FontStyles.disabledTextColor
        text: qsTr("@Cancel")
    }
    StyledText {
        font.italic: true
        font.pointSize: GlobalValues.fontUserCommentPointSize
        text: qsTr("@LongPress")
    }
}
