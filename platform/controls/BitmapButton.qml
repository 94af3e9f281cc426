import QtQuick

// A button that is an icon.
PushButton {
    id: control

    property string image
    // Either may be empty: then it is `image`.
    property string pressedImage
    property string disabledImage
    // Pixels; 0 is the icon's own size.
    property real imageSize: 0

    contentItem: Image {
        fillMode: Image.Pad
        sourceSize: control.imageSize > 0 ? Qt.size(control.imageSize, control.imageSize) : undefined
        source: Global.imageForScreen(!control.enabled && control.disabledImage ? control.disabledImage
                                    : control.held && control.pressedImage ? control.pressedImage : control.image)
    }
}
