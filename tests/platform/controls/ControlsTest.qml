import QtQuick
import QtTest
import com.tessaly.controls 1.0

// Tests of controls, each on a touch device in English, in which an unexpected warning is a failure.
TestCase {
    // The device's switches, from the program that runs the tests.
    // qmllint disable unqualified
    readonly property var switches: device
    // qmllint enable unqualified

    when: windowShown

    function init() {
        failOnWarning(/.?/)
        useTouch(true)
        useLanguage("en")
    }

    function useTouch(touch) {
        switches.setTouch(touch)
        tryCompare(DeviceInfoProvider, "touch", touch)
    }

    function useLanguage(code) {
        switches.setLanguage(code)
        tryCompare(DeviceInfoProvider, "language", code)
    }

    // The front item that is visible, within another or at all, and matches.
    function front(matches, within) {
        return switches.find(within ?? Window.contentItem, matches)
    }

    // With this text or title, whatever its case.
    function labelled(text, within) {
        return front(item => [item.text, item.title].some(
            label => typeof label === "string" && label.toUpperCase() === text.toUpperCase()), within)
    }

    function press(keys) {
        keys.forEach(key => keyClick(key))
    }
}
