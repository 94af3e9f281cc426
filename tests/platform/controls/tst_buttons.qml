import QtQuick
import QtTest
import com.tessaly.controls 1.0

Item {
    id: scene
    width: 758
    height: 1024

    Component { id: bitmap; BitmapButton { text: "B"; image: "image://resource/info" } }
    Component { id: bitmapText; BitmapTextButton { text: "B"; image: "done" } }
    Component { id: plain; TextButton { text: "B" } }
    Component { id: rounded; RoundedCornerTextButton { title: "B" } }
    Component { id: area; DelayedMouseArea { width: 100; height: 100 } }
    Component { id: progress; ProgressBar { width: 200; height: 10; maxValue: 2 } }
    Component { id: busy; BusyIndicator { } }
    SignalSpy { id: clicks }
    Item { id: elsewhere; activeFocusOnTab: true }

    ControlsTest {
        name: "Buttons"

        function create(component, properties = {}, signalName = "clicked") {
            const item = createTemporaryObject(component, scene, properties)
            clicks.target = null
            clicks.signalName = signalName
            clicks.target = item
            clicks.clear()
            return item
        }

        function test_press_data() {
            const kinds = { bitmap: bitmap, bitmapText: bitmapText, plain: plain, rounded: rounded }
            const rows = []
            for (const kind in kinds) {
                for (const enabled of [true, false]) {
                    for (const way of ["mouse", "touch", Qt.Key_Return, Qt.Key_Enter])
                        rows.push({ tag: [kind, way, enabled].join(), kind: kinds[kind], way: way, enabled: enabled })
                }
            }
            return rows
        }

        function test_press(data) {
            const item = create(data.kind)
            const touch = touchEvent(item)
            const [x, y] = [item.width / 2, item.height / 2]
            const [down, up] = {
                mouse: [() => mousePress(item), () => mouseRelease(item)],
                touch: [() => touch.press(1, item, x, y).commit(), () => touch.release(1, item, x, y).commit()]
            }[data.way] ?? [() => keyPress(data.way), () => keyRelease(data.way)]
            useTouch(typeof data.way === "string")
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
        }

        function test_pressThatIsTakenBack() {
            useTouch(false)
            const item = create(plain)
            item.forceActiveFocus()
            keyPress(Qt.Key_Return)
            switches.repeatKey(item, Qt.Key_Return)
            elsewhere.forceActiveFocus()
            keyRelease(Qt.Key_Return)
            mousePress(item)
            mouseMove(item, item.width + 200, 5)
            mouseRelease(item, item.width + 200, 5)
            compare(clicks.count, 0)
        }

        function test_looks() {
            useTouch(false)
            const text = create(plain, { width: 200 })
            const at = x => grabImage(text).pixel(x, 20).toString()
            compare(at(20), "#ffffff")
            text.forceActiveFocus()
            compare(at(1), "#000000") // the frame around the focus
            keyPress(Qt.Key_Return)
            compare(at(20), "#000000")
            keyRelease(Qt.Key_Return)
            useTouch(true)
            compare(at(1), "#ffffff")

            const inverted = Global.getInvertedImage("info"), gray = Global.getNormalImage("info_gray")
            const icon = create(bitmap, { pressedImage: inverted, disabledImage: gray })
            const shown = () => find(icon, child => child.source !== undefined).source.toString()
            compare(shown(), Global.imageForScreen(icon.image))
            mousePress(icon)
            compare(shown(), inverted)
            mouseRelease(icon)
            icon.enabled = false
            compare(shown(), gray)

            const toRead = create(bitmapText, { interactive: false })
            mouseClick(toRead)
            compare(clicks.count, 0)
            compare(find(toRead, child => child.text === "B" && child.color !== undefined).color, "#000000")
        }

        function test_visibleBorders() {
            for (const sides of [[1, 1, 1, 1], [1, 1, 0, 1], [0, 1, 1, 0]]) {
                const image = grabImage(create(rounded, { width: 120, height: 80, visibleBorders: sides, title: "" }))
                const seen = [[60, 0], [119, 40], [60, 79], [0, 40]].map(at => image.red(...at) === 0 ? 1 : 0)
                compare(seen, sides)
            }
        }

        function test_delayedClick() {
            const item = create(area, {}, "delayedClicked")
            const start = Date.now()
            mouseClick(item)
            compare(clicks.count, 0)
            verify(item.pressedShown)
            clicks.wait(1000)
            verify(Date.now() - start >= 199 && !item.pressedShown)
            mousePress(item)
            wait(250)
            mouseRelease(item)
            compare(clicks.count, 2) // it was to be seen long enough
            mouseClick(item)
            mousePress(item) // completes the click before
            compare(clicks.count, 3)
            mouseRelease(item)
            tryCompare(clicks, "count", 4)
        }

        function test_abortedPress() {
            const item = create(area, {}, "delayedClicked")
            mousePress(item)
            item.abort()
            verify(!item.pressedShown)
            mouseRelease(item)
            mouseClick(item)
            item.abort()
            wait(250)
            compare(clicks.count, 0)
            mouseClick(item)
            tryCompare(clicks, "count", 1)
        }

        function test_progress() {
            const bar = create(progress, {}, "valueChanged")
            for (const [value, end] of [[0, 0], [1, 100], [2, 200], [3, 200]]) {
                bar.value = value
                const image = grabImage(bar)
                for (const x of [20, 90, 110, 180])
                    compare(image.red(x, 5), x < end ? 0 : 255, value + " at " + x)
            }
            const indicator = create(busy, {}, "stepChanged")
            const first = grabImage(indicator)
            clicks.wait(900)
            verify(!grabImage(indicator).equals(first))
            indicator.visible = false
            clicks.clear()
            wait(700)
            compare(clicks.count, 0)
        }
    }
}
