import QtQuick

// A mouse area whose click waits until the press was to be seen for a moment: the display is slow.
MouseArea {
    id: area

    readonly property bool pressedShown: !internal.aborted && (pressed || delay.running)

    signal delayedClicked()

    // Cancels a press: its click doesn't come.
    function abort() {
        delay.stop()
        internal.aborted = pressed
    }

    onPressed: {
        if (delay.running) { // a quick second press doesn't swallow the first one's click
            delay.stop()
            area.delayedClicked()
        }
        internal.aborted = false
        internal.since = Date.now()
    }
    onClicked: {
        if (internal.aborted) {
            internal.aborted = false
            return
        }
        const left = GlobalValues.pressedShownTime - (Date.now() - internal.since)
        if (left > 0) {
            delay.interval = left
            delay.start()
        } else {
            area.delayedClicked()
        }
    }

    QtObject {
        id: internal
        property bool aborted: false
        property double since: 0
    }
    Timer {
        id: delay
        onTriggered: area.delayedClicked()
    }
}
