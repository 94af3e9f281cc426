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
            const next = {}
            start()
            const first = settle()
            let state = first
            for (let steps = 0;; ++steps) {
                verify(steps < 3000, "there is no end")
                next[state] = next[state] ?? {}
                // The way to the nearest state with a key that wasn't tried.
                const ways = [[state]], met = new Set([state])
                let way
                while ((way = ways.shift())) {
                    const known = next[way[0]] ?? {}
                    const untried = Object.keys(keys).find(key => !known[key])
                    if (untried && way[0] !== "left") {
                        way.push(untried)
                        break
                    }
                    for (const key in known) {
                        if (!met.has(known[key]) && met.add(known[key]))
                            ways.push([known[key], ...way.slice(1), key])
                    }
                }
                if (!way && state === first)
                    break
                if (way) {
                    keyClick(keys[way[1]])
                    state = next[state][way[1]] = settle()
                }
                if (!way || state === "left") {
                    start()
                    state = settle()
                }
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
