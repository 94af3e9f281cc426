import QtQuick
import com.tessaly.controls
import Tessaly.Simulator

// The texts on the device, to open another.
FocusScope {
    id: chooser

    property ReaderText text

    signal closed()

    function show() {
        visible = true
        list.forceActiveFocus()
        list.listBehaviour.activeFocusIndex = text.text
    }

    Keys.onBackPressed: closed()

    MouseArea {
        anchors.fill: parent
    }
    Rectangle {
        anchors.fill: parent
        color: GlobalValues.defaultBackgroundColor
    }
    DialogBackActionHeader {
        id: header
        width: parent.width
        text: qsTr("@ReaderTexts")
        backwardAvailable: true
        onBack: chooser.closed()
        Keys.onDownPressed: list.forceActiveFocus()
    }
    CachedListView {
        id: list
        anchors.top: header.bottom
        anchors.topMargin: Global.mm(2)
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: Global.mm(3)
        anchors.right: parent.right
        anchors.rightMargin: Global.mm(3)
        clip: true
        model: chooser.text.texts
        KeyNavigation.up: header

        // qmllint disable unqualified
        delegate: PushButton {
            id: entry

            required property int index
            required property var modelData
            readonly property color textColor: held ? GlobalValues.defaultBackgroundColor : GlobalValues.defaultTextColor

            width: list.width
            height: Global.mm(13)
            padding: Global.mm(1)
            text: modelData.title
            Accessible.description: modelData.author
            background: Rectangle {
                color: entry.held ? GlobalValues.defaultHoveredColor : "transparent"
            }
            contentItem: Item {
                Image {
                    id: mark
                    anchors.verticalCenter: parent.verticalCenter
                    source: (entry.held ? Global.getInvertedImage : Global.getNormalImage)(
                        entry.index === chooser.text.text ? "radiobtn_checked" : "radiobtn")
                }
                Column {
                    anchors.left: mark.right
                    anchors.leftMargin: Global.mm(2)
                    anchors.verticalCenter: parent.verticalCenter

                    StyledText {
                        text: entry.modelData.title
                        color: entry.textColor
                        fontStyle: FontStyles.BodyBold
                    }
                    StyledText {
                        text: entry.modelData.author
                        fontStyle: FontStyles.BodyS
                        color: entry.textColor
                    }
                }
            }
            onClicked: {
                chooser.text.open(index)
                chooser.closed()
            }

            DottedSeparator {
                anchors.bottom: parent.bottom
                width: parent.width
                thickness: GlobalValues.defaultSolidSeparatorThickness
            }
        }
        // qmllint enable unqualified
    }
}
