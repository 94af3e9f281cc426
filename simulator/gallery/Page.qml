import QtQuick
import com.tessaly.controls 1.0

// A sheet with controls one below the other.
Rectangle {
    id: page

    default property alias content: column.data
    property string title

    color: GlobalValues.defaultBackgroundColor

    Column {
        id: column
        anchors.fill: parent
        anchors.margins: Global.mm(3)
        spacing: Global.mm(1.5)

        StyledText {
            text: page.title
            fontStyle: FontStyles.Heading2
        }
    }
}
