import QtQuick
import QtTest
import com.tessaly.controls 1.0

Item {
    id: scene
    width: 758
    height: 1024

    Text { id: bound; y: 500; text: qsTr("@Yes") }
    Component { id: imageComponent; Image { } }
    Component { id: iconComponent; BitmapButton { image: "image://resource/plus_add" } }

    ControlsTest {
        name: "Device"

        function test_language() {
            for (const [code, text] of [["de", "Ja"], ["fr", "Oui"], ["ru", "Да"], ["en", "Yes"]]) {
                useLanguage(code)
                compare([bound.text, qsTr("@Yes")], [text, text])
            }
            ignoreWarning(/no translation into xx/)
            useLanguage("xx")
            compare(bound.text, "Yes")
            compare(qsTr("@NobodyKnows"), "@NobodyKnows")
        }

        function test_plural() {
            const numbers = [0, 1, 2, 5, 11, 21, 22]
            // Which number each of them is like.
            const likes = { en: [0, 1, 0, 0, 0, 0, 0], fr: [0, 0, 2, 2, 2, 2, 2], ru: [0, 1, 2, 0, 0, 1, 2] }
            for (const code in likes) {
                useLanguage(code)
                const texts = numbers.map(n => qsTr("@DictionariesHaveBeenDownloaded", "", n))
                compare(texts.map(text => numbers[texts.indexOf(text)]), likes[code])
                verify(texts[3].arg(5).includes("5"))
            }
        }

        function test_formatted_data() {
            return [
                { tag: "filled in", args: ["German"], text: "Download German morphology" },
                { tag: "undefined", args: [undefined], text: "Download morphology" },
                { tag: "null", args: [null], text: "Download morphology" },
                { tag: "missing", args: [], text: "Download morphology" },
                { tag: "a number", args: [7], text: "Download 7 morphology" },
                { tag: "one too many", args: ["a", "b"], text: "Download a morphology" },
                { tag: "like a placeholder", args: ["%s"], text: "Download %s morphology" },
                { tag: "at the end", language: "fr", args: [undefined], text: "Télécharger la morphologie" },
            ]
        }

        function test_formatted(data) {
            useLanguage(data.language ?? "en")
            compare(Fmt.sprintfTr("@DownloadMorphology", data.args), data.text)
        }

        function test_lengths() {
            const icon = createTemporaryObject(iconComponent, scene)
            for (const [screen, dpi] of [["1072x1448", 300], ["758x1024", 212]]) {
                switches.setScreen(screen)
                tryVerify(() => Math.round(DeviceInfoProvider.dpi) === dpi)
                compare(Global.pixelsFromDesign(300), dpi)
                compare(Global.dp(160), dpi)
                compare(icon.implicitContentWidth, Global.pixelsFromDesign(48))
                compare(Global.mm(25.4), dpi)
                verify(GlobalValues.touchTarget >= Global.mm(9))
            }
            switches.setDebugMode(true)
            tryCompare(DebugInfo, "debugEnabled", true)
        }

        function show(source) {
            const image = createTemporaryObject(imageComponent, scene, { source: source })
            tryVerify(() => image.status === Image.Ready)
            return image
        }

        function test_images_data() {
            // At the middle, where the lines cross, beside it, and in the corner.
            return [
                { tag: "plain", name: "resource/plus_add", colors: ["black", "white", "white"] },
                { tag: "inverted", name: "resource/plus_add_inv", colors: ["white", "black", "black"] },
                { tag: "disabled", name: "resource/plus_add_disabled", colors: ["grey", "white", "white"] },
                { tag: "gray", name: "resource/plus_add_gray", colors: ["grey", "white", "white"] },
                { tag: "disc", name: "resource_inv_circle/plus_add", colors: ["white", "black", "white"] },
            ]
        }

        function test_images(data) {
            const image = show("image://" + data.name)
            compare(image.width, Global.pixelsFromDesign(48))
            const shot = grabImage(image)
            const shades = [17, 9, 2].map(at => shot.red(at, at))
            compare(shades.map(red => red < 40 ? "black" : red > 215 ? "white" : "grey"), data.colors)
            compare(show("image://" + data.name + "?600").width, 96)
        }

        function test_unknownImageIsEmpty() {
            for (const name of ["resource/nothing", "resource/nothing_inv", "resource/../tessaly", "resource/",
                                "resource_inv_circle/nothing"]) {
                const image = show("image://" + name)
                compare(grabImage(image).red(0, 0), 255)
                verify(image.width <= 1)
            }
        }
    }
}
