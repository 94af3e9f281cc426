import QtQuick
import QtTest
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
            property Item aside
            width: 300
            height: 200
            header: Item { width: 300; height: 30 }
            // Rows 0 to 2 can't have the focus.
            delegate: FocusScope {
                required property int index
                width: 300
                height: index < 2 ? 0 : 40
                enabled: index !== 2
            }
            LongKeyNavigation.down: aside
        }
    }
    Item { id: elsewhere }
    Component { id: flickableComponent; Flickable { width: 100; height: 400 } }
    Component {
        id: sliderComponent
        ProxySlider {
            readonly property QtObject target: QtObject { property real place: 0 }
            height: 300
            to: 100
            pageStep: 40
            proxy: PropertyProxy { propertyName: "place" }
        }
    }

    ControlsTest {
        name: "Lists"

        function test_rowKeys() {
            const list = createTemporaryObject(listComponent, scene, { model: 200 })
            for (const [from, key, to] of [[0, Qt.Key_Down, 4], [150, Qt.Key_Down, 151], [199, Qt.Key_Down, 199],
                                           [2, Qt.Key_Down, 4], [4, Qt.Key_Up, 3], [3, Qt.Key_Up, 3]]) {
                list.listBehaviour.activeFocusIndex = from
                keyClick(key)
                compare(list.listBehaviour.activeFocusIndex, to)
                tryVerify(() => list.itemAtIndex(to)) // the view has moved there
                const y = list.itemAtIndex(to).mapToItem(list, 0, 0).y
                verify(list.itemAtIndex(to).activeFocus && y >= 0 && y + 40 <= list.height)
            }
            compare(list.contentY, list.originY) // with what stands above
            compare(list.itemAtIndex(9), null) // no row is made ahead: nobody sees it
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
            // What the buttons at the lower edge cover, and a line that is cut there, is on the next page.
            const page = 400 - GlobalValues.scrollListButtonsHeight - FontStyles.tallestLine()
            for (const end of [500, 0]) {
                view.contentHeight = end ? 400 + end : 300
                for (const [scroll, to] of [[Global.scrollFlickablePageDown, Math.min(page, end)],
                                            [Global.scrollFlickableEnd, end], [Global.scrollFlickablePageDown, end],
                                            [Global.scrollFlickablePageUp, Math.max(end - page, 0)],
                                            [Global.scrollFlickableBegin, 0]]) {
                    const from = view.contentY
                    compare([scroll(view), view.contentY], [from !== to, to])
                }
            }
        }

        function test_listPages() {
            const list = createTemporaryObject(listComponent, scene, { height: 190, header: null, model: 50 })
            for (const y of [160, 320]) { // the row that is cut off is the next page's first
                verify(Global.scrollPageDown(list))
                compare(list.contentY, y)
            }
            list.height = 30 // less than a row
            let pages = 0
            while (Global.scrollPageDown(list))
                verify(++pages < 150)
            compare(list.contentY, 48 * 40 - 30)
        }

        // In between there is nothing to be seen.
        function test_flickByWholePixels() {
            const list = createTemporaryObject(listComponent, scene, { model: 200 })
            let parts = 0
            list.contentYChanged.connect(() => parts += list.contentY % 1 !== 0)
            list.flick(0, -1000)
            tryVerify(() => list.contentY > 0 && !list.moving)
            compare(parts, 0)
        }

        function test_slider() {
            const slider = createTemporaryObject(sliderComponent, scene)
            slider.forceActiveFocus()
            press([Qt.Key_Down]) // moves nothing: it has no target
            slider.proxy.target = slider.target
            keysLeft = 0
            for (const [key, place, left] of [[Qt.Key_Up, 0, 1], [Qt.Key_Down, 40, 1], [Qt.Key_Down, 80, 1],
                                              [Qt.Key_Down, 100, 1], [Qt.Key_Down, 100, 2], [Qt.Key_Up, 60, 2]]) {
                press([key])
                compare([slider.target.place, slider.value, keysLeft], [place, place, left])
            }
        }
    }
}
