import QtQuick

// A wide button. It shows nothing yet.
Rectangle {
    property string normalColor: "transparent"
    property string pressed_color: "black"
    property string icon
    property string disabled_icon
    property bool showLongPressText: true

    signal action()

    clip: true
    color: normalColor
}
