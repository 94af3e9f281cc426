pragma Singleton
import QtQuick
import com.tessaly.controls.device

// Lengths, images, keys, and what screens do with loaders and lists. A loader here is one of those that create their item
// when they first become visible.
QtObject {
    // Pixels of so many 1/160 inch.
    function dp(length: real): real {
        return Math.round(length * DeviceInfoProvider.dpi / 160)
    }

    // Pixels of so many dots of the design, which is drawn for 300 of them an inch.
    function pixelsFromDesign(dots: real): real {
        return Math.round(dots * DeviceInfoProvider.dpi / 300)
    }

    // Pixels of so many millimetres.
    function mm(length: real): real {
        return Math.round(length * DeviceInfoProvider.dpi / 25.4)
    }

    function getNormalImage(name: string): string {
        return imageForScreen("image://resource/" + name)
    }

    function getInvertedImage(name: string): string {
        return imageForScreen("image://resource/" + name + "_inv")
    }

    // The address of an icon with the screen's density, so that another screen has another picture.
    function imageForScreen(address: string): string {
        return address.startsWith("image://resource") && !address.includes("?") ? address + "?" + DeviceInfoProvider.dpi
                                                                                 : address
    }

    // Whether the key leads out of a screen: the keys that mean Back, `pageUp` tells whether Page Up is among them, and the
    // one that closes.
    function leadsOut(key: int, pageUp: bool): bool {
        return key === Qt.Key_Back || key === Qt.Key_Backspace || key === Qt.Key_Escape
               || (pageUp && key === Qt.Key_PageUp)
    }

    // For each time that a loader may have become visible: the first time makes its item; all end with `shown()`.
    function showLoader(loader) {
        if (loader.visible)
            loader.active = true
        if (loader.visible && loader.item)
            loader.shown()
    }

    // Gives the focus to the first of the loaders' items that is to be seen, unless it has it; tells whether there is one.
    function focusFirstShown(loaders): bool {
        const first = loaders.find(loader => loader.visible && loader.item)
        if (first && !first.item.activeFocus)
            first.item.forceActiveFocus()
        return first !== undefined
    }

    // A message that must be acknowledged, one with an icon, takes the focus.
    function openInfoMessageLoader(loader, text, icon, milliseconds) {
        loader.visible = true
        if (!loader.visible) { // its screen isn't shown: nobody would read the message
            loader.visible = false
            return
        }
        loader.item.showFor(text, icon, milliseconds)
        if (icon)
            loader.item.forceActiveFocus()
    }

    function closeInfoMessageLoader(loader) {
        loader.visible = false
        if (loader.item)
            loader.item.hide()
    }

    function openInformationConfirmationDialog(loader) {
        loader.visible = true
        if (loader.item && loader.visible) // what it stands in may be hidden
            loader.item.forceActiveFocus()
    }

    function openInformationConfirmationDialogLoader(loader, text) {
        openInformationConfirmationDialog(loader)
        if (loader.item && loader.item.message !== undefined)
            loader.item.message = text
    }

    function openConfirmationDialog(loader, text, callback) {
        loader.callback = callback
        loader.visible = true
        loader.item.title = text
        loader.item.forceActiveFocus()
    }

    function closeConfirmationDialogLoader(loader) {
        loader.visible = false
    }

    // Consumes the page keys, and calls what they are for.
    function turnPage(event, up, down) {
        event.accepted = event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown
        if (event.accepted)
            event.key === Qt.Key_PageUp ? up() : down()
    }

    // Pages of a list begin with a whole row: the one that the page before cut off. They tell whether the list moved.
    function scrollPageDown(list): bool {
        const before = list.contentY
        const bottom = before + list.height
        const row = list.indexAt(list.width / 2, bottom - 1)
        const item = list.itemAtIndex(row)
        if (!item || item.y <= before)
            return scrollFlickablePageDown(list)
        list.positionViewAtIndex(item.y + item.height <= bottom ? Math.min(row + 1, list.count - 1) : row,
                                 ListView.Beginning)
        return list.contentY > before
    }

    function scrollPageUp(list): bool {
        const before = list.contentY
        const row = list.indexAt(list.width / 2, before)
        const item = list.itemAtIndex(row)
        if (!item)
            return scrollFlickablePageUp(list)
        const last = item.y < before ? row : row - 1
        if (last < 0)
            return scrollFlickablePageUp(list)
        list.positionViewAtIndex(last, ListView.End)
        if (list.contentY >= before)
            return scrollFlickablePageUp(list)
        return true
    }

    function scrollFlickablePageDown(flickable): bool {
        return moveFlickable(flickable, flickable.contentY + pageOf(flickable))
    }

    function scrollFlickablePageUp(flickable): bool {
        return moveFlickable(flickable, flickable.contentY - pageOf(flickable))
    }

    // Less than what is in view: the buttons that scroll stand on its lower edge, and a line that is cut there is whole on
    // the next page.
    function pageOf(flickable): real {
        return Math.max(flickable.height / 2,
                        flickable.height - GlobalValues.scrollListButtonsHeight - FontStyles.tallestLine())
    }

    function scrollFlickableBegin(flickable): bool {
        return moveFlickable(flickable, flickable.originY)
    }

    function scrollFlickableEnd(flickable): bool {
        return moveFlickable(flickable, flickable.originY + flickable.contentHeight)
    }

    // As far as the content reaches.
    function moveFlickable(flickable, y: real): bool {
        const before = flickable.contentY
        const last = flickable.originY + Math.max(0, flickable.contentHeight - flickable.height)
        flickable.contentY = Math.max(flickable.originY, Math.min(y, last))
        return flickable.contentY !== before
    }
}
