import QtQuick

PanelText {
    topPadding: 14
    font.pixelSize: 15
    font.bold: true
    color: "black"
}
