import QtQuick
import com.tessaly.controls.device

// A list that keeps no row for reuse: rows write to properties of their own that are bound to the model.
ListView {
    id: list

    readonly property ListBehaviour listBehaviour: ListBehaviour {
        view: list
    }

    readonly property bool focusable: count > 0

    // Keys need a row to start from; one without height is none.
    function settleFocus() {
        if (activeFocus && !DeviceInfoProvider.touch)
            listBehaviour.activeFocusIndex = Math.max(0, currentIndex)
    }

    // By exactly what is in view, as far as the content reaches. They tell whether the list moved.
    function flickPageUp(): bool {
        return Global.moveFlickable(list, contentY - height)
    }

    function flickPageDown(): bool {
        return Global.moveFlickable(list, contentY + height)
    }

    reuseItems: false
    // The next page is made while one looks at this one.
    cacheBuffer: listBehaviour.resetting ? 0 : Math.max(0, height)
    keyNavigationEnabled: false
    highlightMoveDuration: 0
    highlightMoveVelocity: 0
    highlightResizeDuration: 0
    Accessible.role: Accessible.List
}
