import QtQuick
import com.tessaly.controls 1.0
import com.tessaly.controls.services 1.0
import com.tessaly.dictionaries 1.0

Item {
    id: scene
    width: 758
    height: 1024

    property var calls: []

    Keys.onPressed: scene.calls.push("key")
    // qmllint disable unqualified
    Component {
        id: buttonComponent
        ImgBusyIndicatorTextButton {
            width: 700
            icon: "plus_add"
            disabled_icon: "plus_add"
            onAction: scene.calls.push("action")
        }
    }
    Component {
        id: rowComponent
        DictionaryListItem {
            width: 700
            onPressed: scene.calls.push("pressed")
            onClicked: scene.calls.push("clicked")
            onInfoClicked: scene.calls.push("info")
            onToggleSelectionClicked: scene.calls.push("toggle")
        }
    }
    Component { id: listComponent; DictionariesListDialog { onBack: scene.calls.push("back"); onClose: scene.calls.push("close") } }
    // qmllint enable unqualified
    Component { id: tileComponent; MorphDonwloadTile { width: 700; langIso: "en" } }
    QtObject { id: columns; property bool infoColumnSelected: false }
    TsiInstallationSummary { id: morphology }

    DocumentsTest {
        name: "Parts"
        scene: scene
        morphologyUrl: switches.serverUrl() + "/morphology/en.zip"

        function init() {
            useTouch(true)
            useLanguage("en")
            failOnWarning(/.?/)
            scene.calls = []
            switches.answer("/morphology/en.zip", 0, "")
        }

        // Steps: press, release, (release) Outside, hide, disable, able again; Enter: e down, a again, E up, x focus
        // lost; 1 waits less than the time for which a press is shown, 2 more. The state after each, and its actions.
        function test_button_data() {
            return [
                { tag: "quick", steps: "p r 1 2", trace: "P0 P0 P0 N1" },
                { tag: "slow", steps: "p 2 r 2", trace: "P0 P0 N1 N1" },
                { tag: "quickly twice", steps: "p r p r 2", trace: "P0 P0 P1 P1 N2" },
                { tag: "slow after quick", steps: "p r p 2 r", trace: "P0 P0 P1 P1 N2" },
                { tag: "cancelled", steps: "p h 2", trace: "P0 N0 N0" },
                { tag: "cancelled after quick", steps: "p r p h 2", trace: "P0 P0 P1 N1 N1" },
                { tag: "released outside", steps: "p O 2", trace: "P0 N0 N0" },
                { tag: "disabled meanwhile", steps: "p r d 2", trace: "P0 P0 D0 D0" },
                { tag: "disabled under the finger", steps: "p d r 2 u", trace: "P0 D0 D0 D0 N0" },
                { tag: "disabled", steps: "d p r 2 u p r 2", trace: "D0 D0 D0 D0 N0 P0 P0 N1" },
                { tag: "enter", steps: "e a E 2", trace: "P0 P0 N1 N1" },
                { tag: "enter disabled", steps: "d e a E u E", trace: "D0 D0 D0 D0 N0 N0" },
                { tag: "enter lost", steps: "e x E", trace: "P0 N0 N0" },
            ]
        }

        function test_button(data) {
            const steps = data.steps.split(" ")
            const waits = { 1: 60, 2: 260 }
            const due = steps.reduce((sum, step) => sum + (waits[step] ?? 0), 0)
            let trace = "", late = Infinity // in ms: on a machine that was, a quick touch was a slow one
            for (let tries = 0; tries < 30 && late > 100; ++tries) {
                const button = createTemporaryObject(buttonComponent, scene)
                const middle = [button, 350, button.height / 2]
                const act = {
                    p: () => mousePress(...middle), r: () => mouseRelease(...middle),
                    O: () => { mouseMove(button, 350, 500); mouseRelease(button, 350, 500) },
                    h: () => { button.visible = false; button.visible = true; mouseRelease(...middle) },
                    d: () => button.enabled = false, u: () => button.enabled = true,
                    e: () => keyPress(Qt.Key_Return), E: () => keyRelease(Qt.Key_Return),
                    a: () => switches.repeatKey(scene, Qt.Key_Return), x: () => scene.forceActiveFocus(),
                }
                scene.calls = []
                button.forceActiveFocus()
                const began = Date.now()
                trace = steps.map(step => {
                    waits[step] ? wait(waits[step]) : act[step]()
                    return button.state[0] + scene.calls.filter(call => call === "action").length
                }).join(" ")
                button.destroy()
                late = Date.now() - began - due
            }
            verify(late <= 100, `the machine is always late, now by ${late} ms`)
            compare(trace, data.trace)
            verify(!scene.calls.includes("key")) // what is Enter's never gets behind the button
        }

        // The second of two quick touches finds the screen gone.
        function test_buttonGoes() {
            const button = createTemporaryObject(buttonComponent, scene)
            button.action.connect(() => button.visible = false)
            mouseClick(button)
            mouseClick(button)
            compare([button.visible, button.state], [false, "Normal"])
        }

        function test_row_data() {
            const enter = Qt.Key_Return, right = Qt.Key_Right, left = Qt.Key_Left
            const download = { downloadMode: true }, installed = { downloadMode: true, installed: true }
            return [
                { tag: "touch", at: 200, calls: "pressed clicked" },
                { tag: "touch info", at: -30, calls: "info" },
                { tag: "touch to mark", set: download, at: 30, calls: "toggle", marked: true },
                { tag: "touch the text to mark", set: download, at: 200, calls: "" },
                { tag: "touch what is installed", set: installed, at: 30, calls: "" },
                { tag: "touch info to mark", set: download, at: -30, calls: "info" },
                { tag: "enter", keys: [enter], calls: "clicked" },
                { tag: "enter to mark", set: download, keys: [enter], calls: "toggle", marked: true },
                { tag: "enter twice", set: download, keys: [enter, enter], calls: "toggle toggle" },
                { tag: "enter what is installed", set: installed, keys: [enter], calls: "toggle", marked: true },
                { tag: "right", keys: [right, enter], calls: "info", info: true },
                { tag: "left", set: download, keys: [left, enter], calls: "info", info: true },
                { tag: "back", keys: [right, left, enter], calls: "clicked" },
                { tag: "round", set: download, keys: [right, right, enter], calls: "toggle", marked: true },
                { tag: "without a list", set: { list: null }, keys: [right, enter], calls: "clicked" },
            ]
        }

        function test_row(data) {
            useTouch(data.at !== undefined)
            columns.infoColumnSelected = false
            const row = createTemporaryObject(rowComponent, scene, Object.assign({ list: columns }, data.set))
            const other = createTemporaryObject(rowComponent, scene, { y: 200, list: columns })
            row.forceActiveFocus()
            if (data.at)
                mouseClick(row, data.at < 0 ? row.width + data.at : data.at)
            else
                press(data.keys)
            wait(250)
            compare(scene.calls.join(" "), data.calls)
            compare(row.selectedToDownload, data.marked ?? false)
            compare(other.isInfoFocused, data.info ?? false)
        }

        function test_rowAborts() {
            const row = createTemporaryObject(rowComponent, scene)
            for (const abortWhilePressed of [true, false]) {
                mousePress(row, 200)
                if (abortWhilePressed)
                    row.abortPress()
                mouseRelease(row, 200)
                row.abortPress()
                wait(250)
            }
            compare(scene.calls, ["pressed", "pressed"])
            mouseClick(row, 200)
            tryVerify(() => scene.calls.includes("clicked"))
        }

        function test_tile() {
            stage(catalogue, [3])
            const shown = () => ["Download", "Installing", "Finished"].filter(
                part => front(item => typeof item.text === "string" && item.text.includes(part)
                                      || typeof item.title === "string" && item.title.includes(part))).join()
            const tile = createTemporaryObject(tileComponent, scene, { installationSummary: morphology })
            compare([shown(), tile.implicitHeight], ["", GlobalValues.listElementHeight]) // knows of no data yet
            tile.morphExplorer = DictionariesListModel.morphExplorer
            tryCompare(tile, "implicitVisibility", true)
            compare(shown(), "Download")
            const other = createTemporaryObject(tileComponent, scene,
                                                { langIso: "de", morphExplorer: tile.morphExplorer, visible: false })
            compare(other.implicitVisibility, false)

            useTouch(false)
            tile.forceActiveFocus()
            keyClick(Qt.Key_Return)
            compare(morphology.runningCount, 1)
            compare(shown(), "Installing")
            const anew = createTemporaryObject(tileComponent, scene, { morphExplorer: tile.morphExplorer, y: 300 })
            tile.visible = false
            compare(shown(), "Installing") // a row made anew finds the transfer
            anew.visible = false
            tile.visible = true
            morphology.abortAll()
            tryVerify(() => shown() === "Download")
            switches.setMorphology("en", true)
            tryVerify(() => shown() === "Finished")
            const late = createTemporaryObject(tileComponent, scene, { morphExplorer: tile.morphExplorer, visible: false })
            compare(late.implicitVisibility, false)
            switches.setMorphology("en", false)
            tryVerify(() => shown() === "Download")
        }

        function test_sectionHeader() {
            const component = Qt.createComponent("qrc:/qml/DictionarySectionHeader.qml")
            const header = createTemporaryObject(component, scene, { width: 700, langTitle: "Other", langIso: "xx" })
            useLanguage("ru")
            compare([header.header.title, header.implicitHeight], [qsTr("@Other"), GlobalValues.listElementHeight])
            verify(header.header.title !== "Other")
            header.langTitle = "English"
            compare(header.header.title, "English")
            stage(catalogue, [9])
            createTemporaryObject(listComponent, scene)
            tryVerify(() => shows(qsTr("@Other")) && !shows("Other"))
        }

        function test_leavingWhileMorphologyComes() {
            stage(catalogue, [3])
            const dialog = createTemporaryObject(listComponent, scene)
            const download = () => front(item => item.image === "wb_download")
            const question = () => front(item => item.canApply !== undefined)
            tryVerify(download)
            mouseClick(download())
            tap(qsTr("@Close"))
            tryVerify(() => shows(qsTr("@DoYouWantToStopTheDownload")))
            tap(qsTr("@ContinueDownloading"))
            tryVerify(() => !question())

            tap(qsTr("@Close"))
            scene.width -= 8
            dialog.visible = false // as when a screen is turned
            dialog.visible = true
            dialog.forceActiveFocus()
            scene.width += 8
            tryVerify(() => question().activeFocus)
            dialog.visible = false
            tryVerify(() => !question())
            dialog.visible = true

            useTouch(false)
            dialog.focusOnFirstElement()
            press([Qt.Key_Back])
            tryVerify(() => question()?.activeFocus)
            press([Qt.Key_Back])
            tryVerify(() => !question())
            verify(listView().activeFocus)

            compare(scene.calls, [])
            press([Qt.Key_Back])
            tap(qsTr("@Stop"))
            tryVerify(() => !question() && download())
            compare(scene.calls, ["back"])

            press([Qt.Key_Return, Qt.Key_Back])
            tryVerify(() => question()?.activeFocus)
            tryVerify(() => { // once the request has come, its end leaves nothing to stop
                switches.hangUp()
                return !question() && download()?.activeFocus
            })
            compare(scene.calls, ["back"])
        }
    }
}
