import QtQuick
import QtTest
import com.tessaly.controls 1.0

Item {
    id: scene
    width: 758
    height: 1024

    Component { id: bitmap; BitmapButton { text: "B"; image: "image://resource/info" } }
    Component { id: plain; TextButton { text: "B" } }
    Component { id: rounded; RoundedCornerTextButton { title: "B" } }
    SignalSpy { id: clicks; signalName: "clicked" }
    Item { id: elsewhere; activeFocusOnTab: true }

    ControlsTest {
        name: "Buttons"

        function create(component, properties = {}) {
            clicks.target = createTemporaryObject(component, scene, properties)
            clicks.clear()
            return clicks.target
        }

        function test_press_data() {
            const rows = []
            for (const enabled of [true, false]) {
                for (const way of ["mouse", "touch", Qt.Key_Return, Qt.Key_Enter])
                    rows.push({ tag: [way, enabled].join(), way, enabled })
            }
            return rows
        }

        function test_press(data) {
            useTouch(typeof data.way === "string")
            for (const kind of [bitmap, plain, rounded]) {
                const item = create(kind)
                const touch = touchEvent(item)
                const [x, y] = [item.width / 2, item.height / 2]
                const [down, up] = {
                    mouse: [() => mousePress(item), () => mouseRelease(item)],
                    touch: [() => touch.press(1, item, x, y).commit(), () => touch.release(1, item, x, y).commit()]
                }[data.way] ?? [() => keyPress(data.way), () => keyRelease(data.way)]
                verify(Math.min(item.width, item.height) >= 9 * DeviceInfoProvider.dpi / 25.4)
                item.forceActiveFocus()
                item.enabled = data.enabled
                for (let clicked = 0; clicked < 2; ++clicked) {
                    down()
                    compare(clicks.count, data.enabled ? clicked : 0) // acts when it is let go
                    compare(item.held, data.enabled)
                    up()
                    compare(clicks.count, data.enabled ? clicked + 1 : 0)
                    verify(!item.held)
                }
                item.visible = false
            }
        }

        function test_pressThatIsTakenBack() {
            useTouch(false)
            const item = create(plain, { width: 200 })
            item.forceActiveFocus()
            keyPress(Qt.Key_Return)
            compare(grabImage(item).pixel(20, 20).toString(), "#000000")
            switches.repeatKey(item, Qt.Key_Return)
            elsewhere.forceActiveFocus()
            keyRelease(Qt.Key_Return)
            compare(grabImage(item).pixel(20, 20).toString(), "#ffffff")
            mousePress(item)
            mouseMove(item, item.width + 200, 5)
            mouseRelease(item, item.width + 200, 5)
            compare(clicks.count, 0)
        }
    }
}
