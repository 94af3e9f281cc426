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
        delegate: BitmapTextButton {
            required property int index
            required property var modelData
            width: list.width
            height: Global.mm(13)
            image: index === chooser.text.text ? "radiobtn_checked" : "radiobtn"
            text: modelData.title + "\n" + modelData.author
            onClicked: {
                chooser.text.open(index)
                chooser.closed()
            }

            DottedSeparator {
                anchors.bottom: parent.bottom
                width: parent.width
            }
        }
        // qmllint enable unqualified
    }
}
