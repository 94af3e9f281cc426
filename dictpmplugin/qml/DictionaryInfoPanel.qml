import QtQml
import QtQuick
import com.tessaly.controls 1.0
import com.tessaly.controls 2.0 as TSControls2
import com.tessaly.dictionaries 1.0

// What is known of a dictionary, to be scrolled, with the button that deletes it.
Item {
    id: wrapper

    property DictionaryInfo info: DictionaryInfo {}
    readonly property bool contentScrollable: panel.contentHeight >= panel.height
    property MorphExplorer morphExplorer
    // Has the focus when the device has a touch screen.
    readonly property Item focusItem: panel

    signal deleteDict()
    signal back()

    onActiveFocusChanged: shown.focusSlider()
    onVisibleChanged: if (visible) panel.contentY = 0

    Keys.enabled: DeviceInfoProvider.touch // also for a button that was tapped and has the focus
    Keys.onPressed: event => Global.turnPage(event, () => Global.scrollFlickablePageUp(panel),
                                             () => Global.scrollFlickablePageDown(panel))

    QtObject {
        id: shown

        readonly property bool issuer: wrapper.info.issuer !== ""
        readonly property bool languages: wrapper.info.languageFrom !== "" && wrapper.info.languageTo !== ""
        readonly property bool morphology:
            wrapper.morphExplorer?.existanceMap.at(wrapper.info.languageIsoFrom).value === true
        readonly property bool date: wrapper.info.publishDate !== ""
        readonly property bool description: wrapper.info.description !== ""
        readonly property bool scrollAssistant: DeviceInfoProvider.touch && wrapper.contentScrollable

        function focusSlider() {
            if ((wrapper.activeFocus || panel.activeFocus) && slider.visible)
                slider.forceActiveFocus()
        }
    }

    component Line: StyledText {
        width: parent.width
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Flickable {
        id: panel
        anchors.fill: parent
        anchors.topMargin: Global.dp(21.5)
        contentWidth: width
        contentHeight: Math.round(column.height) + GlobalValues.scrollListButtonsHeight
        boundsBehavior: Flickable.StopAtBounds
        pixelAligned: true
        clip: true
        pressDelay: GlobalValues.listPressDelay
        focus: DeviceInfoProvider.touch
        onFlickStarted: DeviceInfoProvider.enterA2onFlickForItem(panel)
        onActiveFocusChanged: shown.focusSlider()

        Column {
            id: column
            x: Global.dp(30)
            width: panel.width - 2 * x
            spacing: Global.dp(22)

            Item {
                width: parent.width
                height: Math.max(cover.height, texts.height)

                Image {
                    id: cover

                    // A cover that can't be loaded takes no room.
                    readonly property bool isThere: status === Image.Ready

                    width: isThere ? Math.min(implicitWidth, parent.width * 0.4) : 0
                    height: isThere ? implicitHeight * width / implicitWidth : 0
                    asynchronous: true
                    source: cover_trial.found
                }
                Column {
                    id: texts
                    anchors.left: cover.right
                    anchors.leftMargin: cover.isThere ? Global.dp(17) : 0
                    anchors.right: parent.right

                    Line {
                        visible: text !== ""
                        text: wrapper.info.title
                        fontStyle: FontStyles.Heading2
                    }
                    Item {
                        width: 1
                        height: Global.dp(6.5)
                        visible: shown.issuer
                    }
                    Line {
                        visible: shown.issuer
                        text: "%1 %2".arg(qsTr("@by")).arg(wrapper.info.issuer)
                        fontStyle: FontStyles.Body
                    }
                    Item {
                        width: 1
                        height: Global.dp(15)
                        visible: shown.languages
                    }
                    Line {
                        visible: shown.languages
                        text: qsTr("@Languages")
                        fontStyle: FontStyles.BodyBold
                    }
                    Line {
                        visible: shown.languages
                        text: "%1, %2".arg(wrapper.info.languageFrom).arg(wrapper.info.languageTo)
                    }
                    Line {
                        visible: shown.morphology
                        text: qsTr("@Morphology")
                        fontStyle: FontStyles.BodyBold
                    }
                    Line {
                        visible: shown.morphology
                        text: Fmt.sprintfTr("@InstalledMorphology", [ wrapper.info.languageFrom ])
                    }
                    Line {
                        visible: shown.date
                        text: qsTr("@DatePublished")
                        fontStyle: FontStyles.BodyBold
                    }
                    Line {
                        visible: shown.date
                        text: wrapper.info.publishDate
                    }
                }
            }
            Line {
                visible: shown.description
                text: wrapper.info.description
                fontStyle: FontStyles.BodyL
            }
        }
    }

    // Fetches the cover for the image, which would complain aloud about one that isn't there: once for each time that the
    // screen is shown. The image finds it in the cache, as long as its own options (fillMode for one) ask for nothing else.
    Canvas {
        id: cover_trial

        readonly property string wanted: wrapper.visible ? wrapper.info.coverUrl : ""
        property string asked: ""
        property string found: ""

        // Later, since the screen is shown with what it showed before.
        onWantedChanged: Qt.callLater(ask) // qmllint disable
        onImageLoaded: look()

        function ask() {
            if (wanted === asked)
                return
            found = ""
            if (asked !== "")
                unloadImage(asked) // a failed one would stay
            asked = wanted
            if (asked !== "")
                loadImage(asked)
            look()
        }

        function look() {
            found = asked !== "" && isImageLoaded(asked) ? asked : ""
        }

        visible: false
    }

    Item {
        id: no_info_rect
        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.max(Global.dp(227), panel.y + column.height)
        width: Global.dp(330)
        height: Global.dp(51)
        visible: !shown.issuer && !shown.languages && !shown.description

        Line {
            height: parent.height
            text: qsTr("@NoInformationAboutDictionary")
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }
    TSControls2.ScrollAssistant {
        id: scroll_assistant
        anchors.left: panel.left
        anchors.right: panel.right
        anchors.bottom: panel.bottom
        z: 2
        visible: shown.scrollAssistant
        canScrollUp: !panel.atYBeginning
        canScrollDown: !panel.atYEnd
        radius: delete_btn.radius
        borderWidth: delete_btn.borderWidth
        onScrollUp: Global.scrollFlickablePageUp(panel)
        onScrollDown: Global.scrollFlickablePageDown(panel)
        onScrollBegin: Global.scrollFlickableBegin(panel)
        onScrollEnd: Global.scrollFlickableEnd(panel)
    }
    RoundedCornerTextButton {
        id: delete_btn
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        z: 3
        width: Global.dp(268)
        height: GlobalValues.scrollListButtonsHeight
        visible: DeviceInfoProvider.touch && !DictionariesListModel.isDownloadMode
        title: qsTr("@Delete").toUpperCase()
        visibleBorders: [1, 1, 0, 1]
        borderWidth: 1
        borderColor: "black"
        radius: 9
        onClicked: wrapper.deleteDict()
    }
    ScrollIndicator {
        anchors.top: panel.top
        anchors.right: panel.right
        visible: shown.scrollAssistant
        flickable: panel
        length: panel.height - GlobalValues.scrollListButtonsHeight
    }
    ProxySlider {
        id: slider
        anchors.top: panel.top
        anchors.bottom: panel.bottom
        anchors.right: panel.right
        anchors.margins: GlobalValues.scrollIndicatorSideMargin
        visible: shouldBeVisible
        from: 0.0
        to: panel.contentHeight - panel.height
        pageStep: panel.height * 0.8
        proxy: PropertyProxy {
            target: panel
            propertyName: "contentY"
        }
    }
}
