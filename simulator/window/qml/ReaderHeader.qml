import QtQuick
import com.tessaly.controls

// The text's title, which leads to the others, and the way to the dictionaries.
FocusScope {
    id: header

    property string title

    signal textsWanted()
    signal dictionariesWanted()
    signal leftDownwards()

    height: GlobalValues.dialogHeaderHeight

    Keys.onDownPressed: leftDownwards()
    Keys.onBackPressed: leftDownwards()

    BitmapTextButton {
        id: texts
        anchors.left: parent.left
        anchors.right: dictionaries.left
        anchors.leftMargin: Global.mm(3)
        anchors.rightMargin: Global.mm(2)
        height: parent.height
        image: "desktop_arrow_down_joystick"
        text: header.title
        Accessible.description: qsTr("@ReaderTexts")
        KeyNavigation.right: dictionaries
        onClicked: header.textsWanted()
    }
    BitmapTextButton {
        id: dictionaries
        focus: true
        anchors.right: parent.right
        anchors.rightMargin: Global.mm(3)
        height: parent.height
        image: "desktop_app_dictionary"
        text: qsTr("@ReaderDictionaries")
        fontStyle: FontStyles.BodyBold
        KeyNavigation.left: texts
        onClicked: header.dictionariesWanted()
    }
    SolidSeparator {
        anchors.bottom: parent.bottom
        x: GlobalValues.dialogHeaderSeparatorSideOffset
        width: parent.width - 2 * x
    }
}
