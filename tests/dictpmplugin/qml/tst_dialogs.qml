import QtQuick
import QtTest
import com.tessaly.controls 1.0
import com.tessaly.dictionaries 1.0

Item {
    id: scene
    width: 758
    height: 1024

    property var calls: []

    SignalSpy { id: applied; signalName: "apply" }
    SignalSpy { id: cancelled; signalName: "cancel" }
    Component { id: listComponent; DictionariesListDialog { } }
    // qmllint disable unqualified
    Component {
        id: informationComponent
        DictionaryInfoDialog {
            onBack: scene.calls.push("back")
            onClose: scene.calls.push("close")
            onDeleteDict: scene.calls.push("delete")
        }
    }
    // qmllint enable unqualified

    DocumentsTest {
        name: "Dialogs"
        scene: scene

        function test_manyRows() {
            const many = Array.from({ length: 500 }, (_, i) => record(i + 1, ["de", "en", "fr"][i % 3], "it"))
            stage(many, [1])
            createTemporaryObject(listComponent, scene)
            enterDownloadMode()
            const shown = () => Array.from(listView().contentItem.children).filter(row => row.visible && row.sourceIndex >= 0)
            const isPressed = item => item.pressed === true || Array.from(item.children).some(isPressed)
            listView().forceActiveFocus()
            mousePress(listView(), 40, 300)
            tryVerify(() => shown().some(isPressed))
            let pages = 1
            for (let y = -1; listView().contentY > y && pages < 100; ++pages) {
                y = listView().contentY
                keyClick(Qt.Key_PageDown)
                verify(!shown().some(isPressed)) // what is under the finger is another dictionary's now
                verify(listView().contentItem.children.length < 40)
                shown()[pages % 3].toggleSelection() // from now on no longer bound to the model
                for (const row of shown())
                    compare(row.selectedToDownload, DictionariesListModel.isSelected(row.sourceIndex), row.title)
            }
            mouseRelease(listView(), 40, 300)
            verify(pages > 20 && listView().atYEnd)
            keyClick(Qt.Key_PageUp)
            verify(!listView().atYEnd)
            DictionariesListModel.refreshData()
        }

        // The view takes the chosen dictionary's row of the model for one of its own.
        function test_scrolls() {
            const many = Array.from({ length: 40 }, (_, i) => record(i + 1, "en", "de"))
            stage(many, many.map(dictionary => dictionary.id))
            const dialog = createTemporaryObject(listComponent, scene)
            tryVerify(() => listView()?.count > 0)
            for (const row of [0, 20, 39]) {
                DictionariesListModel.chooseDictionary(row, false)
                listView().positionViewAtEnd()
                dialog.scroll()
                const distance = listView().itemAtIndex(row).y - listView().contentY
                verify(listView().atYEnd || Math.abs(distance) <= GlobalValues.listElementHeight)
                verify(front(item => item.selected === true))
            }
        }

        function test_progress_data() {
            return [{ tag: "one", count: 1, title: "1 словаря", text: "1 словарь" },
                    { tag: "few", count: 2, title: "2 словарей", text: "2 словаря" },
                    { tag: "many", count: 5, title: "5 словарей", text: "5 словарей" }]
        }

        // A run whose installer is at work, but for which the server still keeps the device waiting.
        function test_progress(data) {
            useLanguage("ru")
            stage(catalogue, [])
            enterDownloadMode()
            mark(data.count)
            const dialog = createTemporaryObject(Qt.createComponent("qrc:/qml/DownloadProgress.qml"), scene)
            applied.target = cancelled.target = dialog
            applied.clear()
            cancelled.clear()
            verify(dialog.title.endsWith(data.title) && shows("0%"), dialog.title)
            tap(qsTr("@Cancel"))
            compare(cancelled.count, 1)
            DictPMController.downloadPackageProcess()
            DictPMController.setSyncState(4)
            tryCompare(DictPMController, "progress", 90)
            verify(shows("90%"))
            compare(front(item => item.maxValue === 100).value, 90)
            mouseClick(labelled(qsTr("@Cancel")))
            labelled(qsTr("@Cancel")).forceActiveFocus()
            keyClick(Qt.Key_Return)
            DictPMController.syncFinished(false)
            verify(dialog.isDownloding && shows(qsTr("@DictionaryPackage")) && !labelled(qsTr("@Cancel")).enabled)
            DictPMController.syncFinished(true)
            compare(dialog.title, qsTr("@SuccessfullyDownloaded"))
            verify(front(item => typeof item.text === "string" && `${item.text} `.includes(data.text + " ")), data.text)
            verify(!shows(qsTr("@DictionaryPackage")) && !shows("90%"))
            tap(qsTr("@OK")) // although it still installs
            compare([applied.count, cancelled.count], [1, 1])
            DictPMController.cancelDownloading()
            switches.hangUp()
            tryCompare(DictPMController, "progress", 0)
            verify(!DictPMController.isInstalling)
            dialog.visible = false
            dialog.visible = true
            verify(dialog.isDownloding && dialog.title.endsWith(data.title))
        }

        function openInformation(values) {
            scene.calls = []
            const dialog = createTemporaryObject(informationComponent, scene)
            Object.assign(dialog.info, values)
            dialog.focusOnFirstElement()
            return dialog
        }

        function test_deleteIsWhere_data() {
            return [
                { tag: "touch", touch: true, labels: ["@Back", "@Close", "@Delete"], calls: "back close delete" },
                { tag: "touch, to mark", touch: true, marking: true, labels: ["@Back", "@Close"], calls: "back close" },
                { tag: "keys", labels: ["@Back", "@Delete"], calls: "back delete" },
                { tag: "keys, to mark", marking: true, labels: ["@Back"], calls: "back" },
            ]
        }

        function test_deleteIsWhere(data) {
            stage(catalogue, [1])
            if (data.marking)
                enterDownloadMode()
            useTouch(data.touch ?? false)
            openInformation({ title: "title" })
            const all = ["@Back", "@Close", "@Delete"]
            compare(all.filter(label => shows(qsTr(label))), data.labels)
            if (data.touch)
                data.labels.forEach(label => tap(qsTr(label)))
            else
                press([Qt.Key_Return, Qt.Key_Right, Qt.Key_Return].slice(0, data.labels.length * 2 - 1))
            compare(scene.calls.join(" "), data.calls)
        }

        function test_information_data() {
            const both = { languageFrom: "English", languageTo: "German" }
            const none = "@NoInformationAboutDictionary", languages = "@Languages", date = "@DatePublished"
            return [
                { tag: "a title alone", values: {}, shown: [none] },
                { tag: "languages", values: both, shown: [languages, "English, German"] },
                { tag: "no language from", values: { languageTo: "German" }, shown: [none] },
                { tag: "no language to", values: { languageFrom: "English", issuer: "us" }, shown: ["by us"] },
                { tag: "a date alone", values: { publishDate: "1 May" }, shown: [none, date, "1 May"] },
                { tag: "description", values: { description: "words" }, shown: ["words"] },
                { tag: "morphology", values: Object.assign({ languageIsoFrom: "en" }, both),
                  shown: [languages, "English, German", "@Morphology", "English (installed)"] },
                { tag: "no morphology", values: Object.assign({ languageIsoFrom: "de" }, both),
                  shown: [languages, "English, German"] },
            ]
        }

        function test_information(data) {
            switches.setMorphology("en", true)
            const dialog = openInformation(Object.assign({ title: "title" }, data.values))
            dialog.morphExplorer = DictionariesListModel.morphExplorer
            const all = new Set(test_information_data().reduce((sum, row) => sum.concat(row.shown), []))
            const shown = label => shows(label.startsWith("@") ? qsTr(label) : label)
            compare(Array.from(all).filter(shown).sort(), data.shown.sort())
            verify(shown("title"))
        }

        function test_cover_data() {
            const dots = "P1\n20 20\n" + "1 ".repeat(400)
            return [{ tag: "there", body: dots, isThere: true }, { tag: "missing", status: 404, body: dots },
                    { tag: "broken", body: "no picture" }, { tag: "offline", offline: true, body: dots },
                    { tag: "too wide", body: "P1\n4097 1\n" + "1 ".repeat(4097) },
                    { tag: "too much", body: "P4\n4096 2049\n" + "U".repeat(512 * 2049) },
                    { tag: "too large", body: dots + " ".repeat(2 << 20) },
                    { tag: "drawn", body: "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='20'/>" }]
        }

        function test_cover(data) {
            switches.setOnline(!data.offline)
            switches.answer("/" + data.tag, data.status ?? 200, data.body)
            const dialog = openInformation({ title: "title", issuer: "us" })
            const left = () => labelled("by us").mapToItem(scene, 0, 0).x
            const before = left()
            dialog.info.coverUrl = switches.serverUrl() + "/" + data.tag
            for (let showing = 1; showing <= 2; ++showing) {
                // One that is there stays in the cache of pictures.
                const requests = data.offline ? 0 : data.isThere ? 1 : showing
                tryVerify(() => switches.requests("/" + data.tag) === requests)
                if (data.isThere)
                    tryVerify(() => left() >= before + 20)
                else
                    wait(150)
                compare(left() > before, data.isThere ?? false)
                dialog.visible = false
                wait(0)
                dialog.visible = true
            }
        }

        function test_longDescription() {
            const words = "A word and another, ".repeat(1000)
            const dialog = openInformation({ title: "title", description: words })
            const panel = front(item => item.contentY !== undefined)
            for (const touch of [true, false]) {
                useTouch(touch)
                panel.contentY = 0
                dialog.focusOnFirstElement()
                if (!touch) {
                    keyClick(Qt.Key_Down) // from the header
                    verify(front(item => item.pageStep !== undefined).activeFocus)
                }
                for (let i = 0; i < 60 && !panel.atYEnd; ++i)
                    keyClick(touch ? Qt.Key_PageDown : Qt.Key_Down)
                verify(panel.atYEnd)
                keyClick(touch ? Qt.Key_PageUp : Qt.Key_Up)
                verify(!panel.atYEnd)
            }
            useTouch(true)
            for (const goUp of [() => mouseClick(front(item => item.canScrollUp !== undefined), GlobalValues.touchTarget / 2),
                                () => keyClick(Qt.Key_PageUp)]) { // although the button has the focus by now
                const before = panel.contentY
                goUp()
                verify(panel.contentY < before)
            }
            compare(scene.calls, [])
        }
    }
}
