import QtQuick
import QtTest
import com.tessaly.dictionaries 1.0

Item {
    id: scene
    width: 758
    height: 1024

    SignalSpy { id: left; signalName: "close" }
    Component { id: controllerComponent; Controller { } }

    // Tries every key in every state of a small device without a touch screen.
    DocumentsTest {
        name: "Walk"
        scene: scene

        readonly property var keys: ({ back: Qt.Key_Back, up: Qt.Key_Up, down: Qt.Key_Down, left: Qt.Key_Left,
                                       right: Qt.Key_Right, enter: Qt.Key_Return })
        property var controller: null
        property var seen: new Set()
        property var reached: new Set()

        function start() {
            if (controller)
                controller.destroy()
            DictPMController.cancelDownloading()
            switches.hangUp()
            stage(catalogue.slice(1, 4), [2, 3])
            controller = controllerComponent.createObject(scene)
            left.target = controller
            left.clear()
            controller.showDicts()
            waitForRendering(controller)
            return settle()
        }

        // What an item and those around it are called.
        function path(item) {
            const names = []
            for (; item && item !== scene; item = item.parent) {
                const name = item.text || item.title
                if (typeof name === "string" && name !== names[0])
                    names.unshift(name)
            }
            return names.join("/").replace(/ \(\d+\)/, "") // however many are marked
        }

        function collectButtons(item) {
            for (const child of Array.from(item.children).filter(each => each.visible && each.enabled)) {
                if (child.busy_visible === undefined ? child.held !== undefined && child.interactive !== false
                                                     : child.state !== "Disabled")
                    seen.add(path(child))
                collectButtons(child)
            }
        }

        // The state after a key, once all that it started has ended.
        function settle() {
            tryVerify(() => left.count > 0 || !wideButton()?.busy_visible)
            if (left.count > 0)
                return "left"
            const item = scene.Window.activeFocusItem
            verify(item && item.visible && item.enabled && item !== scene.Window.contentItem, "focus is lost: " + item)
            const place = path(item)
            verify(place !== "", "focus on what has no name: " + item)
            reached.add(place)
            const top = front(each => each.dialogWidth !== undefined)
            collectButtons(top)
            return [top.title, place, DictionariesListModel.getSelectedIds(), DictionariesListModel.getCount()].join("|")
        }

        function test_everyKeyEverywhere() {
            useTouch(false)
            const next = {} // the state that each key leads to, by state
            const untried = state => state !== "left" && Object.keys(keys).find(key => !next[state]?.[key])
            // The keys that lead to the nearest state in which one wasn't tried, and that one.
            function wayFrom(state) {
                const ways = [[state]], met = new Set([state])
                for (const [place, ...way] of ways) {
                    if (untried(place))
                        return [...way, untried(place)]
                    for (const key in next[place]) {
                        if (!met.has(next[place][key]) && met.add(next[place][key]))
                            ways.push([next[place][key], ...way, key])
                    }
                }
                return []
            }
            const first = start()
            let state = first, way
            for (let steps = 0; (way = wayFrom(state)).length > 0 || state !== first; ++steps) {
                verify(steps < 3000, "there is no end")
                if (way.length > 0) {
                    next[state] = next[state] ?? {}
                    keyClick(keys[way[0]])
                    state = next[state][way[0]] = settle()
                }
                if (way.length === 0 || state === "left")
                    state = start()
            }
            compare(Array.from(seen).filter(button => !reached.has(button)), [])
            verify(seen.size > 20)
            for (let from of Object.keys(next)) {
                for (let steps = 0; from !== "left" && steps < 5; ++steps)
                    from = next[from].back
                compare(from, "left")
            }
        }
    }
}
