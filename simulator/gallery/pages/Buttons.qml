import QtQuick
import com.tessaly.controls 1.0
import ".."

Page {
    title: "Buttons"

    Repeater {
        model: [textButton, roundedButton, openButton, iconTextButton]

        Row {
            id: kind

            required property Component modelData

            spacing: Global.mm(2)

            Repeater {
                model: 4

                Loader {
                    id: place

                    required property int index

                    width: Global.mm(20)
                    sourceComponent: kind.modelData // qmllint disable unqualified
                    enabled: index !== 3
                    onLoaded: {
                        if (index === 1)
                            item.down = true
                        item.width = width
                    }

                    FocusFrame { // at most one item has the focus: here its frame is shown by itself
                        anchors.fill: parent
                        z: 10
                        visible: place.index === 2 && !DeviceInfoProvider.touch
                    }
                }
            }
        }
    }
    Row {
        spacing: Global.mm(1)

        Repeater {
            model: ["info", "close", "arrow_back", "trash_small"]

            BitmapButton {
                required property string modelData
                required property int index

                width: GlobalValues.touchTarget
                down: index === 1 ? true : undefined
                enabled: index !== 3
                image: Global.getNormalImage(modelData)
                pressedImage: Global.getInvertedImage(modelData)
                disabledImage: Global.getNormalImage(modelData + "_disabled")

                Rectangle { // how large it is for a finger
                    anchors.fill: parent
                    color: "transparent"
                    border.color: "#c0c0c0"
                }
            }
        }
        BitmapButton {
            image: Global.getNormalImage("info")
            pressedImage: "image://resource_inv_circle/info"
            down: true
        }
        BitmapButton {
            image: Global.getNormalImage("checkbox_square_on")
        }
        BitmapButton {
            image: Global.getNormalImage("checkbox_square_off")
            Component.onCompleted: forceActiveFocus()
        }
    }
    Component { id: textButton; TextButton { text: qsTr("@Yes") } }
    Component { id: roundedButton; RoundedCornerTextButton { title: qsTr("@Delete") } }
    Component { id: openButton; RoundedCornerTextButton { title: qsTr("@OK"); visibleBorders: [1, 1, 0, 1] } }
    Component { id: iconTextButton; BitmapTextButton { image: "plus_add"; text: qsTr("@OK") } }
}
