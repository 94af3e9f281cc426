import QtQuick

// The least that shows a list of two-line rows and turns its pages.
Window {
    id: window

    required property real listHeight
    required property real rowHeight

    width: 758
    height: 1024
    visible: true

    ListView {
        id: list
        width: window.width
        height: window.listHeight
        cacheBuffer: 0 // a row out of sight would be made between two pages, where nobody measures
        focus: true
        model: 500
        // qmllint disable unqualified
        delegate: Item {
            id: row

            required property int index

            width: window.width
            height: window.rowHeight

            Column {
                anchors.verticalCenter: parent.verticalCenter

                Text {
                    text: "Dictionary %1".arg(row.index)
                    font.pointSize: 20
                }
                Text {
                    text: "Provider %1".arg(row.index)
                    font.pointSize: 16
                }
            }
        }
        // qmllint enable unqualified

        Keys.onPressed: event => {
            if (event.key !== Qt.Key_PageDown)
                return
            event.accepted = true
            list.contentY = Math.min(list.contentY + list.height, list.contentHeight - list.height)
        }
    }
}
