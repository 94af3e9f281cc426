import QtQuick
import com.tessaly.controls 1.0
import ".."

Page {
    title: "Progress and place"

    Repeater {
        model: [0, 1, 25, 60, 100]

        Row {
            id: line

            required property int modelData

            spacing: Global.mm(3)

            ProgressBar {
                anchors.verticalCenter: parent.verticalCenter
                width: Global.mm(45)
                height: Global.dp(6.5)
                value: line.modelData
            }
            StyledText {
                fontStyle: FontStyles.BodyS
                font.bold: true
                text: line.modelData + "%"
            }
        }
    }
    Row {
        spacing: Global.mm(4)

        BusyIndicator { }
        BusyIndicator { step: 3 }
        Rectangle {
            width: Global.mm(8)
            height: width
            color: "black"

            BusyIndicator {
                anchors.centerIn: parent
                inverted: true
            }
        }
    }
    Repeater {
        model: [0, 0.4, 1]

        InstallationProgressBar {
            required property real modelData

            width: parent.width
            title: Fmt.sprintfTr("@InstallingMorphology", [modelData ? "German" : undefined])
            progress.value: modelData
            progress.maxValue: 1.0
            rightMargin: Global.pixelsFromDesign(19.5)
            leftItem: Item {
                width: Global.pixelsFromDesign(94)
                height: width

                BusyIndicator {
                    anchors.centerIn: parent
                }
            }
        }
    }
    DottedSeparator {
        width: parent.width
        color: GlobalValues.defaultSolidseparatorColor
        thickness: GlobalValues.defaultSolidSeparatorThickness
    }
    StyledText {
        width: parent.width
        text: qsTr("@DictionariesHaveBeenDownloaded", "", 2).arg(2)
    }
    StyledText {
        width: parent.width
        text: qsTr("@DownloadingDictionaries", "", 21).arg(21)
        fontStyle: FontStyles.BodyBold
        elide: Text.ElideRight
    }
    ProxySlider { // without the focus it is beside a text
        height: Global.mm(15)
        visible: shouldBeVisible
        Component.onCompleted: forceActiveFocus()
    }
}
