import QtQuick
import QtTest
import com.tessaly.controls 1.0

// Dialogs and messages: what lies over something else.
Item {
    id: scene
    width: 758
    height: 1024

    property int seenBehind: 0

    Keys.onPressed: ++seenBehind
    MouseArea {
        anchors.fill: parent
        onClicked: ++scene.seenBehind
    }
    SignalSpy { id: closed; signalName: "close" }

    Component {
        id: dialogComponent
        DialogContainer {
            property var calls: []
            onBack: calls.push("back")
            onClose: calls.push("close")
            TextButton { width: parent.width; text: "first" }
        }
    }
    Component { id: messageComponent; InfoMessage { visible: false } }
    Component {
        id: loaderComponent
        LoaderNoSleep {
            property var callback
            anchors.fill: parent
            visible: false
            sourceComponent: ConfirmationDialog { }
        }
    }

    ControlsTest {
        name: "Dialogs"

        function test_keysThatTheContentLeaves_data() {
            const swallow = { closeInterceptor: () => true }
            return [
                { tag: "back", key: Qt.Key_Back, calls: ["back"] },
                { tag: "escape", key: Qt.Key_Escape, calls: ["close"] },
                { tag: "page up goes back", key: Qt.Key_PageUp, set: { backOnPgUp: true }, calls: ["back"] },
                { tag: "page up", key: Qt.Key_PageUp, calls: [] },
                { tag: "closing swallowed", key: Qt.Key_Escape, set: swallow, calls: [] },
                { tag: "closing let be", key: Qt.Key_Escape, set: { closeInterceptor: () => false }, calls: ["close"] },
            ]
        }

        function test_keysThatTheContentLeaves(data) {
            const dialog = createTemporaryObject(dialogComponent, scene, data.set ?? {})
            for (const touch of [true, false]) {
                useTouch(touch)
                dialog.focusOnFirstElement()
                dialog.calls = []
                keyClick(data.key)
                compare(dialog.calls, data.calls)
            }
        }

        function test_nothingBehindIsReached() {
            const dialog = createTemporaryObject(dialogComponent, scene)
            seenBehind = 0
            mouseClick(dialog, 1, 1) // beside the frame
            mouseClick(dialog, scene.width / 2, scene.height / 2)
            touchEvent(dialog).press(1, dialog, 3, 3).commit().release(1, dialog, 3, 3).commit()
            dialog.focusOnFirstElement()
            press([Qt.Key_Escape, Qt.Key_Back])
            compare(seenBehind, 0)
            dialog.visible = false
            mouseClick(scene, 1, 1)
            compare(seenBehind, 1)
        }

        function test_messageIsDismissed_data() {
            return [
                { tag: "enter", key: Qt.Key_Return, closes: 1 },
                { tag: "back", key: Qt.Key_Back, closes: 1 },
                { tag: "another key", key: Qt.Key_Down, closes: 0 },
                { tag: "touch", y: 950, closes: 1 },
                { tag: "touch beside it", y: 300, closes: 0 },
            ]
        }

        function test_messageIsDismissed(data) {
            const message = createTemporaryObject(messageComponent, scene)
            closed.target = message
            closed.clear()
            message.showFor("text", "image://resource/icon_error", 60000)
            message.forceActiveFocus()
            seenBehind = 0
            if (data.key)
                keyClick(data.key)
            else
                mouseClick(scene, scene.width / 2, data.y)
            tryCompare(closed, "count", data.closes)
            compare(seenBehind, 1 - data.closes)
            message.showFor("first", "", 600)
            wait(100)
            closed.clear()
            const again = Date.now()
            message.showWithMessage("second") // starts the time anew
            verify(labelled("second", message))
            tryCompare(closed, "count", 1)
            verify(Date.now() - again >= 599)
        }

        function test_keptAwake() {
            const loader = createTemporaryObject(loaderComponent, scene)
            verify(!switches.isKeptAwake())
            Global.openConfirmationDialog(loader, "Really?", {})
            verify(loader.item.activeFocus && switches.isKeptAwake())
            loader.item.apply.connect(() => fail("it can't be applied"))
            loader.item.canApply = false
            mouseClick(labelled("Yes", loader.item))
            Global.closeConfirmationDialogLoader(loader)
            verify(!loader.visible && !switches.isKeptAwake())
        }
    }
}
