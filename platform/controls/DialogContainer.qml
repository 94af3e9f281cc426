import QtQuick

// The frame of a dialog over its whole parent, of which nothing behind can be touched. What is written inside stands in
// one column.
FocusScope {
    id: dialog

    default property alias content: column.data
    property real dialogWidth: GlobalValues.defaultDialogWidth
    property string title
    // Without the title bar.
    property bool headless: false
    property bool backOnPgUp: false
    // A function that returns true keeps the dialog from closing.
    property var closeInterceptor: null
    // A function that is given what a key is to call, to lead out of here, and calls it or not.
    property var keyInterceptor: null
    // Takes the focus first; null: the first that can.
    property Item initialFocusItem: null

    signal close()
    signal back()
    signal apply()
    signal cancel()

    function requestClose() {
        const intercept = closeInterceptor
        if (!intercept || intercept() !== true)
            close()
    }

    function focusOnFirstElement() {
        const first = initialFocusItem ?? firstFocusable(column)
        if (first)
            first.forceActiveFocus()
        else
            dialog.forceActiveFocus()
    }

    function firstFocusable(item) {
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i]
            if (!child.visible || !child.enabled || child.focusable === false)
                continue
            const found = child.focusable ? child : firstFocusable(child)
            if (found)
                return found
        }
        return null
    }

    anchors.fill: parent
    state: "VerticalCenter"
    Accessible.role: Accessible.Dialog
    Accessible.name: title

    Keys.onPressed: event => {
        if (!Global.leadsOut(event.key, backOnPgUp))
            return
        event.accepted = true
        const leave = event.key === Qt.Key_Escape ? requestClose : back
        if (keyInterceptor)
            keyInterceptor(leave)
        else
            leave()
    }

    states: [
        State { name: "VerticalCenter" },
        State { name: "VerticalBottom" }
    ]

    // What is behind the dialog isn't there for fingers.
    MouseArea {
        anchors.fill: parent
        onWheel: wheel => wheel.accepted = true
    }
    Rectangle {
        anchors.fill: frame
        anchors.margins: -GlobalValues.boxGap
        radius: frame.radius
        color: frame.color
    }
    Rectangle {
        id: frame
        width: dialog.dialogWidth
        height: inside.height + 2 * border.width
        x: Math.round((dialog.width - width) / 2)
        y: Math.round(dialog.state === "VerticalBottom" ? dialog.height - height - GlobalValues.screenMargin
                                                    : (dialog.height - height) / 2)
        color: GlobalValues.defaultBackgroundColor
        border.width: GlobalValues.defaultBorderThickness
        border.color: GlobalValues.defaultBorderColor
        radius: GlobalValues.dialogRadius

        Column {
            id: inside
            x: frame.border.width
            y: frame.border.width
            width: parent.width - 2 * x

            Item { // the title bar
                width: parent.width
                height: Math.max(GlobalValues.dialogHeaderHeight, label.height + 2 * Global.mm(2))
                visible: !dialog.headless

                StyledText {
                    id: label
                    x: GlobalValues.dialogSidePadding
                    width: parent.width - 2 * x
                    anchors.verticalCenter: parent.verticalCenter
                    fontStyle: FontStyles.BodyBold
                    wrapMode: Text.Wrap
                    text: dialog.title
                }
                SolidSeparator {
                    x: GlobalValues.dialogHeaderSeparatorSideOffset
                    width: parent.width - 2 * x
                    anchors.bottom: parent.bottom
                }
            }
            Column {
                id: column
                width: parent.width
            }
        }
    }
}
