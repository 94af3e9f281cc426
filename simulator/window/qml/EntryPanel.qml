import QtQuick
import com.tessaly.controls
import Tessaly.Simulator

// What the dictionary says of a word, or why it says nothing. As high as its text needs up to a maximum, from where on
// it turns pages.
FocusScope {
    id: panel

    property WordLookup lookup
    property real maximumHeight: 0
    readonly property bool needsDictionary: lookup.outcome === WordLookup.NoDictionary
                                            || lookup.outcome === WordLookup.DictionaryMissing
                                            || lookup.outcome === WordLookup.DictionaryBroken
    readonly property real fullHeight: header.height + Global.mm(3) + body.contentHeight + Global.mm(3)
                                       + (choose.visible ? choose.height + Global.mm(2) : 0)
    readonly property bool overflows: fullHeight > maximumHeight

    signal closed()
    signal dictionariesWanted()

    function show() {
        visible = true
        area.contentY = 0
        if (choose.visible && !DeviceInfoProvider.touch)
            choose.forceActiveFocus()
        else
            area.forceActiveFocus()
    }

    function message(): string {
        switch (lookup.outcome) {
        case WordLookup.NoEntry:
            return qsTr("@ReaderNoEntry").arg(lookup.word)
        case WordLookup.NoDictionary:
            return qsTr("@ReaderNoDictionary")
        case WordLookup.DictionaryMissing:
            return qsTr("@ReaderDictionaryMissing").arg(lookup.dictionary)
        case WordLookup.DictionaryBroken:
            return qsTr("@ReaderDictionaryBroken").arg(lookup.dictionary)
        }
        return lookup.entry
    }

    height: Math.min(fullHeight, maximumHeight)

    Keys.onBackPressed: closed()

    // What is behind the panel isn't there for fingers.
    MouseArea {
        anchors.fill: parent
    }
    Rectangle {
        anchors.fill: parent
        color: GlobalValues.defaultBackgroundColor
        border.width: GlobalValues.defaultBorderThickness
        border.color: GlobalValues.defaultBorderColor
    }
    DialogBackActionHeader {
        id: header
        width: parent.width
        text: panel.needsDictionary ? panel.lookup.word : panel.lookup.dictionary
        actionIcon: DeviceInfoProvider.touch ? Global.getNormalImage("close") : ""
        actionPressedIcon: Global.getInvertedImage("close")
        onAction: panel.closed()
    }
    Flickable {
        id: area

        readonly property real line: Math.max(1, body.contentHeight / Math.max(1, body.lineCount))
        readonly property real below: (choose.visible ? choose.y : scroll.visible ? scroll.y : panel.height) - Global.mm(1)

        focus: true
        anchors.top: header.bottom
        anchors.topMargin: Global.mm(3)
        anchors.left: parent.left
        anchors.leftMargin: GlobalValues.dialogSidePadding
        anchors.right: parent.right
        anchors.rightMargin: GlobalValues.dialogSidePadding
        // Whole lines, so that none is cut through.
        height: panel.overflows ? Math.floor((below - y) / line) * line : body.contentHeight
        contentHeight: body.contentHeight
        interactive: false
        clip: true

        Keys.onPressed: event => {
            if (event.key === Qt.Key_Down || event.key === Qt.Key_PageDown)
                Global.scrollFlickablePageDown(area)
            else if (event.key === Qt.Key_Up || event.key === Qt.Key_PageUp)
                Global.scrollFlickablePageUp(area)
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                panel.closed()
            else
                return
            event.accepted = true
        }

        StyledText {
            id: body
            width: parent.width
            text: panel.message()
            wrapMode: Text.Wrap
            lineHeight: 1.15
        }
    }
    ScrollIndicator {
        anchors.top: area.top
        anchors.right: parent.right
        anchors.rightMargin: GlobalValues.defaultBorderThickness
        visible: panel.overflows && !DeviceInfoProvider.touch
        flickable: area
    }
    TextButton {
        id: choose
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Global.mm(2)
        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width - 2 * GlobalValues.dialogSidePadding
        visible: panel.needsDictionary
        text: qsTr("@ReaderChooseDictionary")
        onClicked: panel.dictionariesWanted()
    }
    ScrollAssistant {
        id: scroll
        anchors.bottom: parent.bottom
        anchors.bottomMargin: GlobalValues.defaultBorderThickness
        x: GlobalValues.defaultBorderThickness
        width: parent.width - 2 * x
        visible: panel.overflows && !choose.visible && DeviceInfoProvider.touch
        canScrollUp: area.contentY > 0
        canScrollDown: area.contentY + area.height < area.contentHeight
        onScrollUp: Global.scrollFlickablePageUp(area)
        onScrollDown: Global.scrollFlickablePageDown(area)
        onScrollBegin: Global.scrollFlickableBegin(area)
        onScrollEnd: Global.scrollFlickableEnd(area)
    }
}
