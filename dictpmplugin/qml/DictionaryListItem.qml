import QtQuick 2.12

// A dictionary's row in the list. It shows nothing yet.
FocusScope {
    property bool selected: false
    property bool downloadMode: false
    property bool selectedToDownload: false
    property bool installed: false
    property bool hasInfo: false
    property bool hovered: false
    property bool info_clicked: false
    property string title: ""
    property string provider: ""
    property QtObject list: null

    signal clicked()
    signal pressed()
    signal pressedAndHold()
    signal infoClicked()
    signal toggleSelectionClicked()

    focus: true
}
