import QtQuick

// Makes the object written inside it when it is first opened.
Item {
    id: lazy

    default property Component component
    property Item item: null
    // Had the focus before, and gets it back.
    property Item focusedBefore: null
    // Whether the item has the focus for as long as it is to be seen, whatever happens behind it.
    property bool holdsFocus: false
    readonly property Item focused: Window.activeFocusItem

    anchors.fill: parent
    visible: false
    z: 100

    // Shows the item after `setUp(item)`. With `keepFocus` the focus stays where it is; without, the item has it until
    // this is hidden.
    function open(keepFocus: bool, setUp: var) {
        if (!item)
            item = component.createObject(lazy) as Item
        holdsFocus = !keepFocus
        if (!keepFocus && !item.activeFocus)
            focusedBefore = lazy.Window.activeFocusItem
        visible = true
        if (setUp)
            setUp(item)
        if (!keepFocus)
            item.forceActiveFocus()
    }

    function close() {
        visible = false
    }

    function takeFocusBack() {
        if (visible && holdsFocus && !item.activeFocus)
            item.forceActiveFocus()
    }

    onFocusedChanged: if (visible) Qt.callLater(takeFocusBack) // qmllint disable
    onVisibleChanged: {
        if (visible || !focusedBefore)
            return
        if (focusedBefore.visible)
            focusedBefore.forceActiveFocus()
        focusedBefore = null
    }
}
