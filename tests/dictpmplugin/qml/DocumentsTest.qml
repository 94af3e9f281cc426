import QtQuick
import QtTest
import com.tessaly.dictionaries 1.0
import "../../platform/controls"

// Tests of the interface's documents, on a device whose dictionaries, and whose server's, are set by `stage`.
ControlsTest {
    property Item scene
    // Where the server has morphology data of English; empty: it has none.
    property string morphologyUrl

    // Nine of four languages and of none, as the server lists them. Their names are those of their files.
    readonly property var catalogue: Array.from(
        ["de en", "de fr", "en de", "en fr", "en ru", "fr de", "fr en", "ru en", ""],
        (pair, index) => record(index + 1, ...pair.split(" ")))

    function record(id, from, to, more) {
        const language = code => code ? { code } : null
        return Object.assign({
            id, name: "Dictionary " + id, file: "Dictionary " + id + ".tsdict", version: 1, provider: "Publisher " + id,
            language_from: language(from), language_to: language(to), category: "small", description: "",
            publish_date: "1 May"
        }, more)
    }

    // The device knows these records and has the dictionaries with these numbers.
    function stage(records, installed) {
        DictPMController.setErrorType(DictPMController.NoError)
        DictPMController.isInstalling = false
        switches.setOnline(true)
        switches.answer("/v1/dictionaries", 200, JSON.stringify(records))
        switches.answer("/v1/morphology", 200, JSON.stringify(morphologyUrl ? { en: morphologyUrl } : {}))
        switches.answer("/v1/packages", 0, "")
        switches.install([])
        DictionariesListModel.refreshData()
        enterDownloadMode()
        switches.install(installed.map(id => "Dictionary " + id))
        DictionariesListModel.refreshData()
    }

    readonly property SignalSpy refreshed: SignalSpy { target: DictionariesListModel; signalName: "modelRefreshed" }

    function cleanup() {
        DictPMController.cancelDownloading()
        switches.hangUp()
        tryVerify(() => !listView() || !wideButton().busy_visible)
    }

    function enterDownloadMode() {
        refreshed.clear()
        DictionariesListModel.toDownloadMode()
        tryVerify(() => refreshed.count > 0)
    }

    function mark(count) {
        for (let row = 0; row < count; ++row)
            DictionariesListModel.toggleSelected(row)
        DictionariesListModel.reset()
    }

    function shows(text) {
        return labelled(text) !== null
    }

    // The wide button at the bottom of the list.
    function wideButton() {
        return front(item => item.busy_visible !== undefined)
    }

    function listView() {
        return front(item => item.infoColumnSelected !== undefined)
    }

    function tap(text) {
        tryVerify(() => labelled(text), 10000, text)
        mouseClick(labelled(text))
    }

    // In the end, at least.
    function settles(look, expected, what) {
        for (let tries = 0; tries < 100 && JSON.stringify(look()) !== JSON.stringify(expected); ++tries)
            wait(50)
        compare(look(), expected, what)
    }
}
