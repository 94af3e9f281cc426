import QtQuick

// A mouse area whose click waits until the press was to be seen for a moment: the display is slow.
MouseArea {
    id: area

    readonly property bool pressedShown: !aborted && (pressed || delay.running)

    // Private.
    property bool aborted: false
    property double pressedSince: 0

    signal delayedClicked()

    // Cancels a press: its click doesn't come.
    function abort() {
        delay.stop()
        aborted = pressed
    }

    onPressed: {
        if (delay.running) { // a quick second press doesn't swallow the first one's click
            delay.stop()
            area.delayedClicked()
        }
        aborted = false
        pressedSince = Date.now()
    }
    onClicked: {
        if (aborted) {
            aborted = false
            return
        }
        const left = GlobalValues.pressedShownTime - (Date.now() - pressedSince)
        if (left > 0) {
            delay.interval = left
            delay.start()
        } else {
            area.delayedClicked()
        }
    }

    Timer {
        id: delay
        onTriggered: area.delayedClicked()
    }
}
