import QtQuick
import com.tessaly.dictionaries 1.0

Item {
    id: scene
    width: 758
    height: 1024

    Component { id: controllerComponent; Controller { } }

    DocumentsTest {
        name: "Pictures"
        scene: scene

        function test_screens_data() {
            return [{ tag: "touch" }, { tag: "keys" }]
        }

        function test_screens(data) {
            const words = "It explains some thousand words of everyday language, each with its forms. "
            useTouch(data.tag === "touch")
            stage(catalogue.map(each => Object.assign({}, each, { description: words.repeat(4) })), [1, 2, 3, 8])
            createTemporaryObject(controllerComponent, scene).showDicts()
            DictionariesListModel.chooseDictionary(1, false)
            const picture = screen => {
                wait(50)
                compare(switches.difference(scene, screen + "-" + data.tag), "")
            }
            picture("list")
            front(item => item.setInfoSelect !== undefined && item.title.startsWith("English")).infoClicked()
            picture("information")
            keyClick(Qt.Key_Back)
            enterDownloadMode()
            mark(2)
            picture("marking")
            listView().forceActiveFocus()
            wideButton().action()
            picture("progress")
        }
    }
}
