import QtQuick
import QtQuick.Templates as T
import com.tessaly.controls.device

// A vertical slider, `from` at the top, with which keys move a property of something else. At its ends the keys are left
// to whoever is around it.
FocusScope {
    id: root

    property real from: 0
    property real to: 1
    // How far a key goes.
    property real pageStep: (to - from) / 10
    property PropertyProxy proxy: null
    readonly property real value: proxy && proxy.value !== undefined ? proxy.value : from
    readonly property bool focusable: shouldBeVisible
    readonly property bool shouldBeVisible: !DeviceInfoProvider.touch && to > from

    implicitWidth: Global.mm(2.5)
    implicitHeight: Global.mm(40)

    function moveTo(value: real): bool {
        const bounded = Math.max(from, Math.min(value, to))
        if (!proxy || bounded === root.value)
            return false
        proxy.value = bounded
        return true
    }

    Keys.onUpPressed: event => event.accepted = moveTo(value - pageStep)
    Keys.onDownPressed: event => event.accepted = moveTo(value + pageStep)

    T.Slider {
        id: slider

        // What an assistive tool reads, which knows nothing of `from` and `to`.
        readonly property real minimumValue: root.from
        readonly property real maximumValue: root.to

        anchors.fill: parent
        focusPolicy: Qt.NoFocus // it would keep the keys that go beyond its ends
        orientation: Qt.Vertical
        from: root.to
        to: root.from
        value: root.value
        onMoved: root.moveTo(value)
        Accessible.role: Accessible.Slider
        Accessible.name: qsTr("@Scroll")
        Accessible.onIncreaseAction: root.moveTo(root.value + root.pageStep)
        Accessible.onDecreaseAction: root.moveTo(root.value - root.pageStep)

        background: Rectangle {
            x: (slider.width - width) / 2
            width: Global.mm(0.3)
            height: slider.height
            color: GlobalValues.defaultTextColor
        }
        handle: Rectangle {
            x: (slider.width - width) / 2
            y: slider.visualPosition * (slider.height - height)
            width: slider.width
            height: Global.mm(6)
            radius: width / 2
            color: root.activeFocus ? GlobalValues.defaultTextColor : GlobalValues.defaultBackgroundColor
            border.width: GlobalValues.defaultBorderThickness
            border.color: GlobalValues.defaultBorderColor
        }
    }
}
