import QtQuick
import QtTest
import com.tessaly.dictionaries 1.0

Item {
    id: scene
    width: 758
    height: 1024

    Item { id: host }
    SignalSpy { id: closed; signalName: "close" }
    SignalSpy { id: installed; signalName: "installed" }
    Component { id: controllerComponent; Controller { } }

    DocumentsTest {
        name: "Controller"
        scene: scene

        readonly property string list: qsTr("@AddNewDictionaries")
        readonly property string marking: qsTr("@Download")
        readonly property string information: qsTr("@Delete")
        readonly property string question: qsTr("@No")
        readonly property string progress: qsTr("@DictionaryPackage")
        readonly property string success: qsTr("@OK")
        readonly property string slow: qsTr("@Wait")

        function screen() {
            const screens = { slow, question, progress, success, information, marking, list }
            return Object.keys(screens).find(name => shows(screens[name]) || shows(screens[name] + " (1)")) ?? "none"
        }

        function open(touch) {
            stage(catalogue.slice(0, 3), [1, 2])
            useTouch(touch)
            const controller = createTemporaryObject(controllerComponent, scene)
            closed.target = installed.target = controller
            closed.clear()
            installed.clear()
            controller.showDicts()
            waitForRendering(controller)
        }

        function install(...numbers) {
            switches.install(numbers.map(number => "Dictionary " + number))
        }

        function arrive(...numbers) {
            install(...numbers)
            DictionariesListModel.refreshData()
        }

        function offer(records) {
            switches.answer("/v1/dictionaries", 200, JSON.stringify(records))
        }

        // Steps, each with the screen that it leads to. What begins with "@" is touched, a number is a key.
        function test_ways_data() {
            const model = DictionariesListModel, back = Qt.Key_Back, enter = Qt.Key_Return
            const up = Qt.Key_Up, down = Qt.Key_Down, right = Qt.Key_Right
            const info = ["@Info", "information"], add = ["@AddNewDictionaries", "marking"]
            const download = add.concat([() => mark(1), "marking", "@Download (1)", "progress"])
            const added = ["@AddNewDictionaries", "list", () => tryVerify(() => wideButton().enabled)]
            const waits = () => DictPMController.simpleError()
            const succeeds = () => DictPMController.syncFinished(true)
            const fails = () => DictPMController.fatalError()
            const installs = () => DictPMController.isInstalling = true
            return [
                { tag: "list closed", steps: ["@Close", "list"], close: 1 },
                { tag: "list left", steps: [back, "list"], close: 1 },
                { tag: "touched", steps: ["German → French", "list"], close: 1, chosen: 1 },
                { tag: "entered", steps: [enter, "list"], keys: true, close: 1, chosen: 0 },
                { tag: "next entered", steps: [down, "list", enter, "list"], keys: true, close: 1, chosen: 1 },
                { tag: "last entered", steps: [up, "list", up, "list", enter, "list"], keys: true, close: 1, chosen: 1 },
                { tag: "information entered", steps: [right, "list", down, "list", enter, "information"], keys: true },
                { tag: "marked by enter", steps: [up, "list", enter, "marking", enter, "marking", down, "marking",
                                                  enter, "progress", enter, "none"], keys: true, close: 1 },
                { tag: "chosen, to close", steps: [() => model.chooseDictionary(1), "list"], close: 1 },
                { tag: "chosen, to stay", steps: [() => model.chooseDictionary(1, false), "list"] },
                { tag: "information left", steps: [...info, "@Back", "list"] },
                { tag: "information closed", steps: [...info, "@Close", "list"], close: 1 },
                { tag: "kept", steps: [...info, "@Delete", "question", "@No", "information", back, "list"] },
                { tag: "kept by back", steps: [...info, "@Delete", "question", back, "information"] },
                { tag: "deleted", steps: [...info, "@Delete", "question", "@Yes", "list"], left: 1 },
                { tag: "another row by now", steps: [...info, () => arrive(2, 3), "information", "@Delete", "question",
                                                     "@Yes", "list"] },
                { tag: "nothing marked", steps: [...add, back, "list"] },
                { tag: "cancelled", steps: [...download, "@Cancel", "none"], close: 1 },
                { tag: "left", steps: [...download, back, "none"], close: 1 },
                { tag: "not while it installs", steps: [...download, installs, "progress", back, "progress"] },
                { tag: "success", installed: 1, chosen: 1, close: 1, // by what is chosen
                  steps: [...download, () => install(1, 3), "progress", succeeds, "success", "@OK", "none"] },
                { tag: "success without it", installed: 1, chosen: -1,
                  steps: [...download, () => install(1, 7), "progress", succeeds, "success", "@OK", "none"] },
                { tag: "nothing installed", keys: true, left: 0,
                  steps: [() => arrive(), "list", enter, "marking", back, "list"] },
                { tag: "nothing new", steps: [() => offer([]), "list", ...added, "list"] },
                { tag: "the server fails", steps: [() => offer({}), "list", ...added, "list"] },
                { tag: "no network", steps: [() => switches.setOnline(false), "list", ...added, "list"] },
                { tag: "slow, terminated", steps: [...download, waits, "slow", "@Terminate", "none"], close: 1 },
                { tag: "slow, waited for", steps: [...download, waits, "slow", "@Wait", "progress"] },
                { tag: "slow, entered", keys: true, close: 1,
                  steps: [...download, waits, "slow", enter, "progress", waits, "slow", right, "slow", enter, "none"] },
                { tag: "slow, left", steps: [...download, waits, "slow", back, "none", back, "none"], close: 1 },
                { tag: "fails", steps: [...download, fails, "none", back, "none"], close: 1 },
            ]
        }

        function test_ways(data) {
            open(!data.keys)
            for (let i = 0; i < data.steps.length; i += 2) {
                const step = data.steps[i]
                if (typeof step === "function")
                    step()
                else if (typeof step === "number")
                    keyClick(step)
                else
                    tap(step.replace(/@\w+/, key => qsTr(key)))
                settles(screen, data.steps[i + 1])
            }
            tryCompare(closed, "count", data.close ?? 0)
            wait(20)
            if (data.chosen !== undefined)
                compare(DictionariesListModel.selectedDictionaryIndex, data.chosen)
            compare([closed.count, installed.count, switches.installedCount()],
                    [data.close ?? 0, data.installed ?? 0, data.left ?? 2])
        }

        function test_messages_data() {
            const model = DictionariesListModel
            const failed = qsTr("@ThereIsAnIssueWithDownloadingSelectedDictionaries")
            const network = qsTr("@DownloadFailedCheckYourNetworkConnectionAndTryAgain")
            const fail = error => { DictPMController.setErrorType(error); DictPMController.fatalError() }
            return [
                { tag: "no space", does: () => fail(7), text: qsTr("@InsufficientStorageSpace"), time: 10000, close: 1 },
                { tag: "installer", does: () => fail(6), text: failed, time: 10000, close: 1 },
                { tag: "nothing new", does: () => model.noNewDictionaries(), text: qsTr("@NoNewDictionaries"), time: 3000 },
                { tag: "deleted", does: () => model.dictionaryDeleted("A", "B", 0),
                  text: qsTr("@DictionaryWasDeleted").arg("A").arg("B"), time: 3000 },
                { tag: "network", does: () => model.dataManagerError(DataManager.NetworkError), text: network, time: 10000 },
                { tag: "offline", does: () => model.dataManagerError(DataManager.NetworkNotAvailableError) },
                { tag: "no database", does: () => model.dataManagerError(DataManager.DatabaseFileNotExist) },
                { tag: "another", does: () => model.dataManagerError(DataManager.UndefinedError) },
            ]
        }

        function test_messages(data) {
            open(false)
            data.does()
            const message = front(item => item.autohideInterval !== undefined)
            compare(message?.text, data.text)
            compare(message?.autohideInterval, data.time)
            if (message) {
                message.autohideInterval = 50
                message.showWithMessage(message.text)
                tryVerify(() => !shows(data.text))
            }
            compare([closed.count, installed.count], [data.close ?? 0, 0])
        }

        // A host that has the focus, over which the interface comes back.
        function test_hidden() {
            open(false)
            const controller = closed.target
            DictPMController.fatalError()
            verify(shows(qsTr("@ThereIsAnIssueWithDownloadingSelectedDictionaries")))
            controller.visible = false
            host.forceActiveFocus()
            scene.width -= 8
            scene.width += 8
            verify(host.activeFocus)
            DictPMController.fatalError() // nobody would read it
            switches.install([])
            DictionariesListModel.refreshData()
            switches.install(["Dictionary 1", "Dictionary 2"]) // of which none is chosen
            controller.showDicts()
            compare(front(item => item.autohideInterval !== undefined), null)
            compare([screen(), closed.count], ["list", 0])
            tryVerify(() => shows("German → French"))
            verify(!shows(qsTr("@NoInstalledDictionaries")) && !host.activeFocus)
        }
    }
}
