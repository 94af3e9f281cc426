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
            return ["mouse", "touch", Qt.Key_Return, Qt.Key_Enter].map(way => ({ tag: way, way }))
        }

        function test_press(data) {
            useTouch(typeof data.way === "string")
            for (const [kind, enabled] of [[bitmap, true], [plain, true], [rounded, true], [plain, false]]) {
                const item = create(kind, { enabled })
                const touch = touchEvent(item)
                const [x, y] = [item.width / 2, item.height / 2]
                const [down, up] = {
                    mouse: [() => mousePress(item), () => mouseRelease(item)],
                    touch: [() => touch.press(1, item, x, y).commit(), () => touch.release(1, item, x, y).commit()]
                }[data.way] ?? [() => keyPress(data.way), () => keyRelease(data.way)]
                verify(Math.min(item.width, item.height) >= 9 * DeviceInfoProvider.dpi / 25.4)
                item.forceActiveFocus()
                down()
                compare([clicks.count, item.held], [0, enabled]) // acts when it is let go
                up()
                compare([clicks.count, item.held], [enabled ? 1 : 0, false])
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
            keyPress(Qt.Key_Return)
            item.forceActiveFocus()
            keyRelease(Qt.Key_Return) // isn't the one of a press here
            mousePress(item)
            mouseMove(item, item.width + 200, 5)
            mouseRelease(item, item.width + 200, 5)
            compare(clicks.count, 0)
        }
    }
}
