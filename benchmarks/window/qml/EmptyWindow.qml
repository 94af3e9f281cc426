import QtQuick

// What every window costs.
Window {
    width: 758
    height: 1024
    visible: true
}
