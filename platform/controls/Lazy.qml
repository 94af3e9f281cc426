import QtQuick

// Makes the object written inside it when it is first opened.
Item {
    id: lazy

    default property Component component
    property Item item: null
    // Had the focus before, and gets it back.
    property Item focusedBefore: null

    anchors.fill: parent
    visible: false
    z: 100

    // Shows the item after `setUp(item)`. With `keepFocus` the focus stays where it is; without, the item has it until
    // this is hidden.
    function open(keepFocus: bool, setUp: var) {
        if (!item)
            item = component.createObject(lazy) as Item
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

    onVisibleChanged: {
        if (visible || !focusedBefore)
            return
        if (focusedBefore.visible)
            focusedBefore.forceActiveFocus()
        focusedBefore = null
    }
}
