import QtQuick

// One of several, side by side or one beneath the other: objects with a `name`, which is the value, and a `label`.
Grid {
    id: choice

    property var model: []
    property var current
    property bool vertical: false

    signal chosen(var name)

    width: parent ? parent.width : 0
    columns: vertical ? 1 : model.length
    spacing: 4

    Repeater {
        model: choice.model
        // qmllint disable unqualified
        delegate: PanelButton {
            required property var modelData
            width: choice.vertical ? choice.width
                                   : (choice.width - (choice.model.length - 1) * choice.spacing) / choice.model.length
            text: modelData.label
            marked: modelData.name === choice.current
            onClicked: choice.chosen(modelData.name)
        }
        // qmllint enable unqualified
    }
}
