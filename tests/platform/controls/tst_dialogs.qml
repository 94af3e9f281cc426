import QtQuick
import QtTest
import com.tessaly.controls 1.0

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

    Component {
        id: dialogComponent
        DialogContainer {
            property var calls: []
            title: "Title"
            onBack: calls.push("back")
            onClose: calls.push("close")
            StyledText { text: "not for the focus" }
            TextButton { width: parent.width; text: "disabled"; enabled: false }
            TextButton { width: parent.width; text: "first" }
            TextButton { width: parent.width; text: "last" }
        }
    }
    Component {
        id: questionComponent
        ConfirmationDialog {
            property var calls: []
            onApply: calls.push("apply")
            onCancel: calls.push("cancel")
            onClose: calls.push("close")
            applyCallback: () => calls.push("applyCallback")
            cancelCallback: () => calls.push("cancelCallback")
        }
    }
    Component {
        id: headerComponent
        DialogBackActionHeader {
            property var calls: []
            width: parent.width
            actionIcon: "image://resource/close"
            onBack: calls.push("back")
            onAction: calls.push("action")
        }
    }

    ControlsTest {
        name: "Dialogs"

        function labelled(dialog, text) {
            return find(dialog, item => item.text === text)
        }

        function test_keysThatTheContentLeaves_data() {
            const swallow = { closeInterceptor: () => true }
            return [
                { tag: "back", key: Qt.Key_Back, calls: ["back"] },
                { tag: "escape", key: Qt.Key_Escape, calls: ["close"] },
                { tag: "page up", key: Qt.Key_PageUp, calls: [] },
                { tag: "page up goes back", key: Qt.Key_PageUp, set: { backOnPgUp: true }, calls: ["back"] },
                { tag: "page down", key: Qt.Key_PageDown, set: { backOnPgUp: true }, calls: [] },
                { tag: "closing swallowed", key: Qt.Key_Escape, set: swallow, calls: [] },
                { tag: "closing let be", key: Qt.Key_Escape, set: { closeInterceptor: () => false }, calls: ["close"] },
                { tag: "back isn't closing", key: Qt.Key_Back, set: swallow, calls: ["back"] },
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

        function test_focusAndPlace() {
            useTouch(false)
            const dialog = createTemporaryObject(dialogComponent, scene)
            dialog.focusOnFirstElement()
            verify(labelled(dialog, "first").activeFocus)
            const last = labelled(dialog, "last")
            dialog.initialFocusItem = last
            dialog.focusOnFirstElement()
            verify(last.activeFocus)

            const below = () => scene.height - last.mapToItem(scene, 0, last.height).y
            const above = labelled(dialog, "Title").mapToItem(scene, 0, 0).y
            fuzzyCompare(below(), above, GlobalValues.dialogHeaderHeight / 2)
            dialog.state = "VerticalBottom"
            verify(below() < GlobalValues.touchTarget)
            dialog.headless = true
            verify(!labelled(dialog, "Title"))
        }

        function test_question_data() {
            const right = Qt.Key_Right, enter = Qt.Key_Return
            const yes = ["applyCallback", "apply"], no = ["cancelCallback", "cancel"]
            return [
                { tag: "enter", keys: [enter], calls: no },
                { tag: "to the right", keys: [right, enter], calls: yes },
                { tag: "and back", keys: [right, Qt.Key_Left, enter], calls: no },
                { tag: "escape", keys: [Qt.Key_Escape], calls: no },
                { tag: "back", keys: [Qt.Key_Back], calls: no },
                { tag: "can't apply", keys: [right, enter], set: { canApply: false }, calls: no },
                { tag: "stays", keys: [right, enter], set: { closeOnAction: false }, calls: yes, stays: true },
                { tag: "touch yes", touch: "Yes", calls: yes },
                { tag: "touch no", touch: "No", calls: no },
                { tag: "touch what can't be", touch: "Yes", set: { canApply: false }, calls: [], stays: true },
            ]
        }

        function test_question(data) {
            useTouch(data.touch !== undefined)
            const dialog = createTemporaryObject(questionComponent, scene, data.set ?? {})
            dialog.focusOnFirstElement()
            if (data.touch)
                mouseClick(labelled(dialog, data.touch))
            else
                press(data.keys)
            compare(dialog.calls.filter(call => call !== "close"), data.calls)
            compare(dialog.calls.filter(call => call === "close").length, data.stays ? 0 : 1)
        }

        function test_header_data() {
            const left = Qt.Key_Left, right = Qt.Key_Right, enter = Qt.Key_Return
            return [
                { tag: "action alone", backwardAvailable: false, keys: [left, enter], calls: ["action"] },
                { tag: "from back to action", keys: [enter, right, enter], calls: ["back", "action"] },
                { tag: "to action and back", keys: [right, left, enter], calls: ["back"] },
                { tag: "back alone", actionAvailable: false, keys: [right, enter], calls: ["back"] },
                { tag: "can't go back", canBack: false, keys: [enter, left, enter], calls: ["action", "action"] },
                { tag: "can't act", canAction: false, keys: [right, enter], calls: ["back"] },
                { tag: "can't do either", canBack: false, canAction: false, keys: [enter, right, enter], calls: [] },
                { tag: "touch", touch: true, calls: ["back", "action"] },
                { tag: "touch one", touch: true, canBack: false, calls: ["action"] },
            ]
        }

        function test_header(data) {
            useTouch(data.touch ?? false)
            const header = createTemporaryObject(headerComponent, scene, { backwardAvailable: true })
            for (const name of ["backwardAvailable", "actionAvailable", "canBack", "canAction"])
                header[name] = data[name] ?? true
            compare(header.focusable, data.calls.length > 0)
            header.forceActiveFocus()
            const edge = GlobalValues.touchTarget / 2
            if (data.touch)
                [edge, scene.width - edge].forEach(x => mouseClick(header, x))
            else
                press(data.keys)
            compare(header.calls, data.calls)
        }
    }
}
