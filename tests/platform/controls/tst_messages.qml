import QtQuick
import QtTest
import com.tessaly.controls 1.0

Item {
    id: scene
    width: 758
    height: 1024

    property int touchesBehind: 0
    property int made: 0

    MouseArea {
        anchors.fill: parent
        onClicked: ++scene.touchesBehind
    }
    Item { id: before; activeFocusOnTab: true }
    SignalSpy { id: closed; signalName: "close" }

    Component { id: messageComponent; InfoMessage { visible: false } }
    Component { id: questionComponent; ConfirmationDialog { property string message } }
    Component { id: flickableComponent; Flickable { width: 100; height: 100; contentHeight: 500; Item { } } }
    Component {
        id: loaderComponent
        LoaderNoSleep {
            property var callback
            property Component content
            anchors.fill: parent
            visible: false
            onVisibleChanged: if (visible && status === Loader.Null) sourceComponent = content
        }
    }
    Component {
        id: lazyComponent
        Lazy {
            // qmllint disable unqualified
            TextButton { text: "inside"; Component.onCompleted: ++scene.made }
            // qmllint enable unqualified
        }
    }

    ControlsTest {
        name: "Messages"

        function showMessage(text, icon, milliseconds) {
            const message = createTemporaryObject(messageComponent, scene)
            closed.target = message
            closed.clear()
            message.showFor(text, icon, milliseconds)
            return message
        }

        function test_messageGoesByItself() {
            const message = showMessage("first", "", 300)
            wait(200)
            message.showWithMessage("second") // starts the time anew
            wait(200)
            compare(closed.count, 0)
            verify(find(message, item => item.text === "second"))
            tryCompare(closed, "count", 1)
            verify(message.visible) // whoever hears of it hides it
            message.showWithMessage("third")
            message.visible = false
            wait(400)
            compare(closed.count, 1)
        }

        function test_messageIsDismissed_data() {
            return [
                { tag: "enter", key: Qt.Key_Return, closes: true },
                { tag: "back", key: Qt.Key_Back, closes: true },
                { tag: "escape", key: Qt.Key_Escape, closes: true },
                { tag: "another key", key: Qt.Key_Down, closes: false },
                { tag: "touch", y: 950, closes: true },
                { tag: "touch beside it", y: 300, closes: false },
            ]
        }

        function test_messageIsDismissed(data) {
            const message = showMessage("text", "image://resource/icon_error", 5000)
            message.forceActiveFocus()
            touchesBehind = 0
            if (data.key)
                keyClick(data.key)
            else
                mouseClick(scene, scene.width / 2, data.y)
            tryCompare(closed, "count", data.closes ? 1 : 0)
            compare(touchesBehind, data.key || data.closes ? 0 : 1)
        }

        function test_loaders() {
            for (const icon of ["", "image://resource/icon_error"]) {
                before.forceActiveFocus()
                const loader = createTemporaryObject(loaderComponent, scene, { content: messageComponent })
                Global.openInfoMessageLoader(loader, "text", icon, 4000)
                compare([loader.item.visible, loader.item.activeFocus], [true, icon !== ""])
                Global.closeInfoMessageLoader(loader)
                verify(!loader.visible)
            }
            verify(!switches.isKeptAwake())
            const loader = createTemporaryObject(loaderComponent, scene, { content: questionComponent })
            const callback = { applyAction: () => 1 }
            Global.openConfirmationDialog(loader, "Really?", callback)
            compare([loader.callback, loader.item.title], [callback, "Really?"])
            verify(loader.item.activeFocus && switches.isKeptAwake())
            Global.closeConfirmationDialogLoader(loader)
            verify(!loader.visible && !switches.isKeptAwake())
            Global.openInformationConfirmationDialogLoader(loader, "Note")
            compare(loader.item.message, "Note")
            verify(loader.item.activeFocus)
        }

        function test_lazy() {
            before.forceActiveFocus()
            const lazy = createTemporaryObject(lazyComponent, scene)
            compare(scene.made, 0)
            const seen = []
            lazy.open(true, item => seen.push(item.text))
            verify(lazy.visible && before.activeFocus)
            lazy.open(false, item => seen.push(item.text))
            verify(lazy.item.activeFocus)
            lazy.open(false, null)
            lazy.close()
            verify(!lazy.visible && before.activeFocus)
            compare(seen, ["inside", "inside"])
            compare(scene.made, 1)
        }

        function test_fastMode_data() {
            return [{ tag: "not in it", flick: false, redraw: true, waits: false },
                    { tag: "flicking", flick: true, redraw: true, waits: true },
                    { tag: "no drawing", flick: true, redraw: false, waits: false }]
        }

        function test_fastMode(data) {
            let calls = 0
            const view = createTemporaryObject(flickableComponent, scene)
            const flick = () => {
                view.flick(0, -500)
                DeviceInfoProvider.enterA2onFlickForItem(view)
            }
            if (data.flick)
                flick()
            compare(DeviceInfoProvider.inA2, data.flick)
            DeviceInfoProvider.exitA2(data.redraw, () => ++calls)
            compare([DeviceInfoProvider.inA2, calls], [false, data.waits ? 0 : 1])
            wait(300)
            compare(calls, 1)
            DeviceInfoProvider.exitA2(data.redraw, undefined)
            flick()
            view.cancelFlick()
            verify(!DeviceInfoProvider.inA2) // it ends with the flick, and the screen is drawn then
            DeviceInfoProvider.exitA2(true, () => ++calls)
            compare(calls, 1)
            tryVerify(() => calls === 2)
        }
    }
}
