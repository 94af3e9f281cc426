import QtQuick
import QtTest
import com.tessaly.controls 1.0
import com.tessaly.dictionaries 1.0

Item {
    id: scene
    width: 758
    height: 1024

    Component { id: controllerComponent; Controller { } }

    // Goes through every screen, question and message.
    DocumentsTest {
        name: "Screens"
        scene: scene
        morphologyUrl: switches.serverUrl() + "/morphology/en.zip"

        // How each is reached, from the list of what is installed or from the one before.
        readonly property var journeys: [{
            list: () => {},
            fetching: () => wideButton().busy_visible = true,
            marking: () => enterDownloadMode(),
            marked: () => mark(5),
            progress: () => wideButton().action(),
            success: () => DictPMController.syncFinished(true),
            slow: () => DictPMController.simpleError(),
        }, {
            empty: () => DictionariesListModel.showEmptyScreen(),
        }, {
            information: () => openInformation(),
            question: () => openInformation().deleteDict(),
        }, {
            nothingKnown: () => {
                const info = openInformation().info
                info.issuer = info.languageFrom = info.description = ""
            },
        }, {
            installing: () => mouseClick(tile().installButton),
            stopQuestion: () => keyClick(Qt.Key_Back),
        }, {
            failed: () => DictPMController.fatalError(),
            noSpace: () => { DictPMController.setErrorType(7); DictPMController.fatalError() },
            nothingNew: () => DictionariesListModel.noNewDictionaries(),
            deleted: () => DictionariesListModel.dictionaryDeleted("Portuguese (Brazil)", "Portuguese (Brazil)", 0),
            network: () => DictionariesListModel.dataManagerError(DataManager.NetworkError),
        }]

        function tile() {
            return front(item => item.installButton !== undefined)
        }

        function openInformation() {
            front(item => item.setInfoSelect !== undefined).infoClicked()
            return front(item => item.deleteDict !== undefined && item.dialogWidth !== undefined)
        }

        function use(touch, language, width = 758, height = 1024) {
            scene.width = width
            scene.height = height
            switches.setScreen(`${width}x${height}`)
            tryCompare(DeviceInfoProvider, "screenWidth", width)
            useTouch(touch)
            useLanguage(language)
        }

        // Goes on a journey as far as a screen, and looks at each on the way.
        function travel(journey, last, look) {
            const controller = createTemporaryObject(controllerComponent, scene)
            controller.showDicts()
            tryVerify(() => tile()?.implicitVisibility)
            for (const screen in journey) {
                journey[screen]()
                wait(20)
                look(screen)
                if (screen === last)
                    break
            }
            leave(controller)
        }

        function leave(controller) {
            tile()?.installationSummary.abortAll()
            DictPMController.cancelDownloading()
            DictPMController.setErrorType(DictPMController.NoError)
            switches.hangUp()
            DictionariesListModel.setIsDownloadMode(false)
            controller.destroy()
            wait(0)
        }

        function initTestCase() {
            const words = "It explains some thousand words of everyday language, each with its forms. "
            stage(catalogue.map(each => Object.assign({}, each, { description: words.repeat(14) })), [3, 4, 1])
            DictionariesListModel.chooseDictionary(1, false)
            switches.answer("/morphology/en.zip", 0, "")
            switches.setMorphology("en", false)
        }

        function wrongTexts(within) {
            return Array.from(within.children).filter(item => item.visible).reduce((cut, item) => {
                const isWider = item.elide !== undefined && item.contentWidth > item.width + 1
                const isCut = item.width > 0 && (item.truncated === true || isWider) // a row without width is to go
                const isKey = typeof item.text === "string" && item.text.startsWith("@") // not translated
                return cut.concat(isCut || isKey ? [item.text] : [], wrongTexts(item))
            }, [])
        }

        function test_texts_data() {
            const rows = []
            for (const size of ["758x1024", "1072x1448"]) {
                for (const touch of [true, false]) {
                    for (const language of ["en", "de", "fr", "ru"])
                        rows.push({ tag: [size, touch ? "touch" : "keys", language].join(), size, touch, language })
                }
            }
            return rows
        }

        function test_texts(data) {
            use(data.touch, data.language, ...data.size.split("x").map(Number))
            const pictured = data.language === "en" && scene.width === 758 ? ["list", "information", "marked", "progress"] : []
            for (const journey of journeys) {
                travel(journey, "", screen => {
                    settles(() => wrongTexts(scene.Window.contentItem), [], screen)
                    if (pictured.includes(screen))
                        settles(() => switches.difference(scene, screen + (data.touch ? "-touch" : "-keys")), "")
                })
            }
        }

        // What an assistive tool finds on each of the foremost screens, but for lists and their headers.
        function test_accessibleItems_data() {
            const back = "Button|Back|", close = "Button|Close|", info = "German ⇾ English (small)"
            const texts = ["StaticText|" + info + "|", "StaticText|by Publisher 1|", "StaticText|Languages|",
                           "StaticText|German, English|"]
            const offered = ["English → Russian", "French → English"].reduce((all, title) => all.concat(
                `ListItem|${title}|`, `CheckBox|${title}|`, "Button|Information|"), [])
            return [
                { tag: "list", touch: true, has: ["List|Select dictionary|", "Heading|English|", "ListItem|English → German|",
                                                  "Button|Information|", "Button|Download morphology|", close] },
                { tag: "empty", has: ["StaticText|No dictionaries installed|", "Button|ADD DICTIONARIES|"] },
                { tag: "fetching", has: ["Animation|Busy|"] },
                { tag: "marking", has: [back, ...offered, "Button|DOWNLOAD|unavailable"], lacks: "StaticText|Press and hold|" },
                { tag: "marked", has: ["Button|DOWNLOAD (5)|", "StaticText|Press and hold|"] },
                { tag: "information", touch: true, has: ["Dialog|" + info + "|", back, close, ...texts, "Button|DELETE|",
                                                         "Button|Scroll up|unavailable", "Button|Scroll down|"] },
                { tag: "information", has: [...texts, "Button|Delete|", "Slider|Scroll|rising"] },
                { tag: "question", has: [`Dialog|Delete the dictionary ${info}?|`, "Button|No|", "Button|Yes|"] },
                { tag: "installing", has: ["ProgressBar|Installing morphology|"] },
                { tag: "progress", has: ["Dialog|Downloading 5 dictionaries|", "StaticText|Dictionary package|",
                                         "ProgressBar|Progress|", "Button|CANCEL|"] },
                { tag: "slow", has: ["Button|Wait|", "Button|Stop|"] },
                { tag: "failed", has: ["AlertMessage|The selected dictionaries couldn’t be downloaded. Try again later.|"] },
            ]
        }

        function test_accessibleItems(data) {
            use(data.touch ?? false, "en")
            travel(journeys.find(journey => data.tag in journey), data.tag, screen => {
                if (screen !== data.tag)
                    return
                const found = () => switches.accessibleItems(scene)
                settles(() => data.has.filter(item => !found().includes(item)), [])
                settles(() => found().filter(item => item.split("|")[1] === "" || item === data.lacks), []) // all have names
            })
        }
    }
}
