import QtQuick

// A line between the parts of a screen.
Rectangle {
    height: GlobalValues.defaultSolidSeparatorThickness
    color: GlobalValues.defaultSolidseparatorColor
}
