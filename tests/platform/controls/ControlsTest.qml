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

    // The first item inside that is to be seen and matches.
    function find(item, matches) {
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i]
            const found = !child.visible ? null : matches(child) ? child : find(child, matches)
            if (found)
                return found
        }
        return null
    }

    function press(keys) {
        keys.forEach(key => keyClick(key))
    }
}
