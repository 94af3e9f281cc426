import QtQuick
import com.tessaly.controls.device

// A list that uses a row again for another one when it is out of sight. A row that writes to a property of its own that is
// bound to the model binds it again then (ListView.onReused).
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

    reuseItems: true
    pixelAligned: true // in between a flick would draw, as it comes to rest, what nobody sees
    // Each row made ahead would be a frame that changes nothing; a page of rows used again comes as soon without.
    cacheBuffer: 0
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false // nothing is to be seen of it, but it takes a frame to follow
    highlightMoveDuration: 0
    highlightMoveVelocity: 0
    highlightResizeDuration: 0
    Accessible.role: Accessible.List
}
