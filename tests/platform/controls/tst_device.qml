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

        function test_formatted() {
            const key = "@DownloadMorphology"
            for (const [args, text] of [[["German"], "Download German morphology"], [[undefined], "Download morphology"],
                                        [[], "Download morphology"], [["%s", "b"], "Download %s morphology"]])
                compare(Fmt.sprintfTr(key, args), text)
            useLanguage("fr")
            compare(Fmt.sprintfTr(key, [undefined]), "Télécharger la morphologie")
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

        // At the middle, where the lines cross, beside it, and in the corner.
        function test_images() {
            for (const [name, colors] of [["resource/plus_add", "black white white"],
                                          ["resource/plus_add_inv", "white black black"],
                                          ["resource/plus_add_disabled", "grey white white"],
                                          ["resource_inv_circle/plus_add", "white black white"]]) {
                const image = show("image://" + name)
                compare(image.width, Global.pixelsFromDesign(48))
                const shot = grabImage(image)
                const shades = [17, 9, 2].map(at => shot.red(at, at))
                compare(shades.map(red => red < 40 ? "black" : red > 215 ? "white" : "grey").join(" "), colors)
                image.visible = false
            }
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
