pragma Singleton
import QtQuick
import com.tessaly.controls.device

// The interface's type, by use.
QtObject {
    id: styles

    enum Style { Body, BodyBold, BodyS, BodyL, Heading2, Heading5 }

    readonly property string family: "Noto Sans"
    readonly property color disabledTextColor: "#8c8c8c"

    // Letter height of each style, in printer's points on the screen.
    readonly property var points: [10.5, 10.5, 9, 11.5, 14, 10.5]

    // By style. In points of the host's screen, which fonts are measured in; worked out once for all texts.
    readonly property var pointSizes: points.map(
        size => DeviceInfoProvider.pointSize(size * DeviceInfoProvider.dpi / 72))
    readonly property var bold: [false, true, false, false, true, true]

    // Pixels of the tallest line. Worked out when it is wanted: each font takes long to load.
    function tallestLine(): real {
        return Math.ceil(metrics.height)
    }

    readonly property FontMetrics metrics: FontMetrics {
        font.family: styles.family
        font.pointSize: styles.pointSizes[FontStyles.Heading2]
        font.bold: true
    }
}
