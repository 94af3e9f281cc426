import QtQuick
import QtTest
import Qt.labs.qmlmodels
import com.tessaly.controls 1.0

Item {
    id: scene
    width: 758
    height: 1024

    property int keysLeft: 0

    Keys.onPressed: ++keysLeft

    Component {
        id: listComponent
        CachedListView {
            property var calls: []
            property Item aside
            width: 300
            height: 200
            // Rows 1 and 2 of five can't have the focus.
            delegate: FocusScope {
                required property int index
                width: 300
                height: index === 1 ? 0 : 40
                enabled: index !== 2
            }
            Keys.onUpPressed: calls.push("up")
            Keys.onDownPressed: calls.push("down")
            LongKeyNavigation.down: aside
        }
    }
    Component {
        id: slowListComponent
        CachedListView {
            width: 300
            height: 200
            model: TableModel { TableModelColumn { display: "name" } }
            // Takes longer than the view gives it at a time.
            delegate: Item { height: 40; Repeater { model: 400; Text { text: "row" } } }
        }
    }
    Item { id: elsewhere }
    Component { id: rowComponent; Item { width: 300; height: 40 } }
    Component { id: flickableComponent; Flickable { width: 100; height: 400 } }
    Component {
        id: sliderComponent
        ProxySlider {
            readonly property QtObject target: QtObject { property real place: 0 }
            height: 300
            to: 100
            pageStep: 40
            proxy: PropertyProxy { propertyName: "nothing" }
        }
    }
    Component {
        id: assistantComponent
        ScrollAssistant {
            property var calls: []
            width: 500
            onScrollUp: calls.push("up")
            onScrollDown: calls.push("down")
            onScrollBegin: calls.push("begin")
            onScrollEnd: calls.push("end")
        }
    }

    ControlsTest {
        name: "Lists"

        function test_resetWhileRowsAreMadeAhead() {
            const list = createTemporaryObject(slowListComponent, scene)
            for (let i = 0; i < 5; ++i) {
                list.model.rows = Array.from({ length: 60 }, () => ({ name: "many" }))
                wait(20 + 10 * i)
                list.model.rows = [{ name: "one" }]
                tryCompare(list, "count", 1)
            }
        }

        function test_rowKeys_data() {
            const up = Qt.Key_Up, down = Qt.Key_Down
            return [
                { tag: "past rows without focus", from: 0, keys: [down], index: 3, calls: [] },
                { tag: "and back", from: 3, keys: [up], index: 0, calls: [] },
                { tag: "beyond the top", from: 0, keys: [up], index: 0, calls: ["up"] },
                { tag: "beyond the bottom", from: 4, keys: [down, down], index: 4, calls: ["down", "down"] },
                { tag: "to a disabled row", from: 2, keys: [], index: 3, calls: [] },
                { tag: "the nearest is before", count: 3, from: 2, keys: [], index: 0, calls: [] },
                { tag: "far away", count: 200, from: 150, keys: [down], index: 151, calls: [] },
                { tag: "no rows", count: 0, from: 0, keys: [down], index: -1, calls: ["down"] },
            ]
        }

        function test_rowKeys(data) {
            const list = createTemporaryObject(listComponent, scene, { model: data.count ?? 5 })
            compare(list.listBehaviour.activeFocusIndex, -1)
            list.listBehaviour.activeFocusIndex = data.from
            list.forceActiveFocus()
            press(data.keys)
            compare(list.listBehaviour.activeFocusIndex, data.index)
            compare(list.calls, data.calls)
            if (data.index < 0)
                return
            tryVerify(() => list.itemAtIndex(data.index)) // the view has moved there
            const row = list.itemAtIndex(data.index)
            const y = row.mapToItem(list, 0, 0).y
            verify(row.activeFocus && y >= 0 && y + row.height <= list.height)
        }

        function test_titleAbove() {
            const list = createTemporaryObject(listComponent, scene, { model: 50, header: rowComponent })
            list.positionViewAtIndex(20, ListView.Beginning)
            list.listBehaviour.activeFocusIndex = 0
            compare(list.contentY, list.originY)
        }

        function test_heldKey() {
            const list = createTemporaryObject(listComponent, scene, { model: 5, aside: elsewhere })
            list.listBehaviour.activeFocusIndex = 0
            keyPress(Qt.Key_Down)
            switches.repeatKey(list, Qt.Key_Down)
            verify(list.activeFocus)
            wait(550)
            switches.repeatKey(list, Qt.Key_Down)
            verify(list.aside.activeFocus)
            keyRelease(Qt.Key_Down)
            list.forceActiveFocus()
            press([Qt.Key_Down])
            verify(list.activeFocus) // each press is held anew
        }

        function test_flickablePages() {
            const view = createTemporaryObject(flickableComponent, scene)
            const go = (scroll, places) => {
                for (const to of places) {
                    const from = view.contentY
                    compare(scroll(view), from !== to)
                    compare(view.contentY, to)
                }
            }
            // What the buttons at the lower edge cover, and a line that is cut there, is on the next page.
            const page = 400 - GlobalValues.scrollListButtonsHeight - FontStyles.tallestLine()
            for (const end of [500, 0]) {
                view.contentHeight = end ? 400 + end : 300
                go(Global.scrollFlickablePageDown, [Math.min(page, end), end, end])
                go(Global.scrollFlickablePageUp, [Math.max(end - page, 0), 0, 0])
                go(Global.scrollFlickableEnd, [end, end])
                go(Global.scrollFlickableBegin, [0, 0])
            }
        }

        function test_listPages_data() {
            return [{ tag: "rows fit", height: 200, down: [200, 400] },
                    { tag: "one is cut off", height: 190, down: [160, 320] },
                    { tag: "taller than the view", height: 30, down: [] }]
        }

        function test_listPages(data) {
            const list = createTemporaryObject(listComponent, scene, { height: data.height })
            list.delegate = rowComponent
            list.model = 50
            for (const y of data.down) {
                verify(Global.scrollPageDown(list))
                compare(list.contentY, y)
            }
            let pages = 0
            while (Global.scrollPageDown(list))
                verify(++pages < 150)
            compare(list.contentY, 50 * 40 - data.height)
            for (pages = 0; Global.scrollPageUp(list); ++pages)
                verify(pages < 150)
            compare(list.contentY, 0)
        }

        function test_scrollAssistant() {
            const assistant = createTemporaryObject(assistantComponent, scene)
            const ends = Array.from([assistant.width / 8, assistant.width * 7 / 8])
            ends.forEach(x => mouseClick(assistant, x))
            compare(assistant.calls, ["up", "down"])
            for (const x of ends) {
                mousePress(assistant, x)
                wait(900)
                mouseRelease(assistant, x)
            }
            compare(assistant.calls, ["up", "down", "begin", "end"])
            assistant.canScrollUp = assistant.canScrollDown = false
            ends.forEach(x => mouseClick(assistant, x))
            compare(assistant.calls.length, 4)
        }

        function test_slider() {
            const slider = createTemporaryObject(sliderComponent, scene)
            slider.forceActiveFocus()
            press([Qt.Key_Down]) // moves nothing: there is no such object
            slider.proxy.target = slider.target
            press([Qt.Key_Down]) // nor such a property
            slider.proxy.propertyName = "place"
            keysLeft = 0
            for (const [key, place] of [[Qt.Key_Down, 40], [Qt.Key_Down, 80], [Qt.Key_Down, 100], [Qt.Key_Up, 60]]) {
                press([key])
                compare(slider.target.place, place)
            }
            compare(keysLeft, 0)
            slider.target.place = 100
            compare(slider.value, 100)
            press([Qt.Key_Down])
            compare(keysLeft, 1)
            slider.proxy.target = null
            compare(slider.proxy.value, undefined)

            for (const [touch, to, visible] of [[false, 100, true], [false, 0, false], [true, 100, false]]) {
                useTouch(touch)
                slider.to = to
                compare(slider.shouldBeVisible, visible)
            }
        }
    }
}
