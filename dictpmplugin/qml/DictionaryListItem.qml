import QtQml 2.12
import QtQuick 2.12
import com.tessaly.controls 1.0

// A dictionary's row in the list.
FocusScope {
    id: wrapper

    property bool selected: false
    property bool downloadMode: false
    property bool selectedToDownload: false
    property bool installed: false
    property bool hasInfo: false
    property bool hovered: false
    property bool info_clicked: false
    property string title: ""
    property string provider: ""
    // Whether the key focus is on the marks or on the info buttons, in all rows alike, is a property of the list.
    property QtObject list: null
    // qmllint disable
    readonly property bool isInfoFocused: list !== null && list.infoColumnSelected === true
    // A binding, since a connection would make a page take a quarter longer.
    readonly property real listX: list?.x ?? 0
    // qmllint enable

    signal clicked()
    signal pressed()
    signal pressedAndHold()
    signal infoClicked()
    signal toggleSelectionClicked()

    function setInfoSelect(value) {
        // qmllint disable
        if (list)
            list.infoColumnSelected = value
        // qmllint enable
    }

    // Cancels a press under way: its click doesn't come.
    function abortPress() {
        mainMouseArea.abort()
    }

    function toggleSelection() {
        selectedToDownload = !selectedToDownload
        toggleSelectionClicked()
    }

    onListXChanged: abortPress() // the list is pushed aside
    // It will be another dictionary's row: whoever is pressed lets go.
    ListView.onPooled: {
        abortPress()
        row_keys.drop()
        info_keys.drop()
        for (const button of [info_button, check_box.item].filter(button => button?.pressed)) {
            button.visible = false // a button that is hidden forgets its press
            button.visible = true
        }
    }

    focus: true
    implicitHeight: Math.max(Math.round(info_column.height), GlobalValues.listElementHeight)
    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.selectable: !downloadMode
    Accessible.selected: selected
    Accessible.onPressAction: {
        if (wrapper.downloadMode)
            return
        wrapper.pressed()
        wrapper.clicked()
    }

    DelayedMouseArea {
        id: mainMouseArea
        anchors.fill: parent
        visible: !wrapper.downloadMode
        onPressed: wrapper.pressed()
        onDelayedClicked: wrapper.clicked()
    }

    Rectangle {
        id: frame_rect
        anchors.fill: parent
        anchors.leftMargin: GlobalValues.dialogHeaderSeparatorSideOffset
        anchors.rightMargin: GlobalValues.dialogHeaderSeparatorSideOffset
        radius: GlobalValues.listElementHoverFrameBorderRadius
        color: "transparent"

        Item {
            id: left_part_rect

            anchors.left: parent.left
            anchors.right: right_row.left
            height: parent.height
            focus: !wrapper.isInfoFocused
            onActiveFocusChanged: row_keys.drop()

            Keys.onPressed: event => row_keys.press(event)
            Keys.onReleased: event => row_keys.release(event)

            HeldKey {
                id: row_keys
                sideways: true
                onActed: key => {
                    if (key === Qt.Key_Left || key === Qt.Key_Right)
                        wrapper.setInfoSelect(true)
                    else if (wrapper.downloadMode)
                        wrapper.toggleSelection()
                    else
                        wrapper.clicked()
                }
            }

            Item {
                id: marks
                anchors.verticalCenter: parent.verticalCenter
                width: wrapper.downloadMode ? check_box.width : GlobalValues.touchTarget
                height: wrapper.downloadMode ? check_box.height : GlobalValues.touchTarget

                Image {
                    id: select_button
                    anchors.centerIn: parent
                    visible: !wrapper.downloadMode
                    source: !enabled ? Global.getNormalImage("radiobtn_gray")
                          : wrapper.selected ? Global.getNormalImage("radiobtn_checked") : Global.getNormalImage("radiobtn")
                }
                // Only rows to download have one: a button takes long to make.
                // qmllint disable unqualified
                Loader {
                    id: check_box
                    active: wrapper.downloadMode
                    visible: active
                    Accessible.role: Accessible.CheckBox
                    Accessible.name: wrapper.title
                    Accessible.description: wrapper.installed ? qsTr("@Unavailable") : ""
                    Accessible.checkable: true
                    Accessible.checked: wrapper.selectedToDownload
                    Accessible.onToggleAction: if (!wrapper.installed) wrapper.toggleSelection()
                    sourceComponent: BitmapButton {
                        enabled: !wrapper.installed
                        image: Global.getNormalImage("checkbox_square_" + (wrapper.selectedToDownload ? "on" : "off"))
                        pressedImage: Global.getNormalImage("checkbox_square_on_inv")
                        disabledImage: Global.getNormalImage("checkbox_square_on_disabled")
                        text: wrapper.title
                        Accessible.ignored: true // a button's role can't be changed
                        onClicked: wrapper.toggleSelection()
                    }
                }
                // qmllint enable unqualified
            }
            Rectangle {
                anchors.left: marks.right
                anchors.right: parent.right
                height: parent.height
                radius: GlobalValues.listElementHoverFrameBorderRadius
                color: wrapper.hovered ? GlobalValues.defaultHoveredColor : "transparent" // what is clear isn't drawn
                border.width: GlobalValues.defaultPressedFrameBorderWidth
                border.color: color

                Column {
                    id: info_column
                    x: Global.pixelsFromDesign(8)
                    width: parent.width - 2 * x
                    anchors.verticalCenter: parent.verticalCenter
                    topPadding: Global.pixelsFromDesign(8)
                    bottomPadding: Global.pixelsFromDesign(8)

                    StyledText {
                        width: parent.width
                        text: wrapper.title
                        fontStyle: FontStyles.BodyBold
                        color: wrapper.hovered ? GlobalValues.defaultBackgroundColor : GlobalValues.defaultTextColor
                        elide: Text.ElideRight
                        maximumLineCount: 1
                    }
                    StyledText {
                        width: parent.width
                        visible: text !== ""
                        text: wrapper.provider
                        fontStyle: FontStyles.BodyS
                        color: wrapper.hovered ? GlobalValues.defaultBackgroundColor : GlobalValues.defaultTextColor
                        elide: Text.ElideRight
                        maximumLineCount: 1
                    }
                }
            }
            FocusElement {
            }
        }
        Item {
            id: right_row
            anchors.right: parent.right
            width: info_button.width
            height: parent.height

            BitmapButton {
                id: info_button

                anchors.verticalCenter: parent.verticalCenter
                focus: wrapper.isInfoFocused
                image: Global.getNormalImage("info")
                pressedImage: "image://resource_inv_circle/info"
                text: qsTr("@Info")
                onClicked: wrapper.infoClicked()
                onActiveFocusChanged: info_keys.drop()

                Keys.onPressed: event => info_keys.press(event)
                Keys.onReleased: event => info_keys.release(event)

                HeldKey {
                    id: info_keys
                    enters: false
                    sideways: true
                    onActed: wrapper.setInfoSelect(false)
                }
            }
        }
    }
    DottedSeparator {
        anchors.left: frame_rect.left
        anchors.right: frame_rect.right
        anchors.bottom: parent.bottom
        color: GlobalValues.defaultSolidseparatorColor
        thickness: GlobalValues.defaultSolidSeparatorThickness
    }
    Rectangle {
        id: focusFrame
        anchors.fill: parent
        visible: mainMouseArea.pressedShown
        color: '#00000000'
        border.width: GlobalValues.defaultBorderThickness
        border.color: GlobalValues.defaultBorderColor
    }
}
