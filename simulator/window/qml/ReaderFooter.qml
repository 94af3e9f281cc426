import QtQuick
import com.tessaly.controls

// Which dictionary words are looked up in, which page this is, and for fingers the way to the others.
Item {
    id: footer

    property string dictionary
    property int page: 0
    property int pageCount: 1

    signal turned(int direction)

    height: Global.mm(10)

    StyledText {
        anchors.left: parent.left
        anchors.right: pages.left
        anchors.leftMargin: Global.mm(8)
        anchors.rightMargin: Global.mm(3)
        anchors.verticalCenter: parent.verticalCenter
        fontStyle: FontStyles.BodyS
        text: footer.dictionary || qsTr("@ReaderNoDictionaryShort")
        elide: Text.ElideRight
    }
    Row {
        id: pages
        anchors.right: parent.right
        anchors.rightMargin: DeviceInfoProvider.touch ? Global.mm(3) : Global.mm(8)
        height: parent.height

        TextButton {
            height: parent.height
            visible: DeviceInfoProvider.touch
            enabled: footer.page > 0
            fontStyle: FontStyles.Heading2
            text: "‹"
            Accessible.name: qsTr("@ReaderPreviousPage")
            onClicked: footer.turned(-1)
        }
        StyledText {
            anchors.verticalCenter: parent.verticalCenter
            fontStyle: FontStyles.BodyS
            text: qsTr("@ReaderPage").arg(footer.page + 1).arg(footer.pageCount)
        }
        TextButton {
            height: parent.height
            visible: DeviceInfoProvider.touch
            enabled: footer.page + 1 < footer.pageCount
            fontStyle: FontStyles.Heading2
            text: "›"
            Accessible.name: qsTr("@ReaderNextPage")
            onClicked: footer.turned(1)
        }
    }
}
