import QtQuick
import com.tessaly.controls 1.0

// A dialog over the whole screen with a long text.
DialogContainer {
    id: dialog
    headless: true

    DialogBackActionHeader {
        width: parent.width
        text: "English ⇾ German (FreeDict)"
        backwardAvailable: true
        actionIcon: Global.getNormalImage(DeviceInfoProvider.touch ? "close" : "trash_small")
    }
    Item {
        width: parent.width
        height: dialog.height - 3 * GlobalValues.dialogHeaderHeight

        Flickable {
            id: panel
            anchors.fill: parent
            contentHeight: text.height
            clip: true

            StyledText {
                id: text
                width: parent.width
                padding: Global.dp(30)
                wrapMode: Text.Wrap
                fontStyle: FontStyles.BodyL
                text: "%1\n\n%2\n\n%3\n\n".arg(qsTr("@CantDownloadDictionariesServerIsRespondingTooLong"))
                      .arg(qsTr("@DownloadFailedCheckYourNetworkConnectionAndTryAgain"))
                      .arg(qsTr("@ThereIsAnIssueWithDownloadingSelectedDictionaries")).repeat(3)
            }
        }
        ScrollAssistant {
            width: parent.width
            anchors.bottom: parent.bottom
            visible: DeviceInfoProvider.touch
            canScrollUp: false
        }
        ProxySlider {
            anchors.right: parent.right
            anchors.margins: GlobalValues.scrollIndicatorSideMargin
            height: parent.height
            visible: shouldBeVisible
            to: panel.contentHeight - panel.height
            proxy: PropertyProxy {
                target: panel
                propertyName: "contentY"
            }
            Component.onCompleted: forceActiveFocus()
        }
        ScrollIndicator {
            anchors.right: parent.right
            visible: DeviceInfoProvider.touch
            length: parent.height - GlobalValues.scrollListButtonsHeight
            thumbLength: GlobalValues.minimalScrollIndicatorThickness
        }
    }
}
