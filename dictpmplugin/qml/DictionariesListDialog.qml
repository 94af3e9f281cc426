import QtQml 2.12
import QtQuick 2.12
import QtQuick.Window 2.12
import com.tessaly.controls 1.0
import com.tessaly.controls.services 1.0
import com.tessaly.dictionaries 1.0
import Qt.labs.qmlmodels 1.0

// The main screen: the dictionaries of the device or, in download mode, those to be had, by source language.
DialogContainer {
    id: wrapper

    signal infoClicked(int selected_index)
    signal chooseDictionary(int index, bool close)
    signal close2()

    function makeScrollWorks() { list.forceActiveFocus() }

    function stopScroll() {
        list.cancelFlick()
        DeviceInfoProvider.exitA2(true, () => wrapper.close2())
    }

    // The list counts its headers too, so it lands near the chosen dictionary; that is on purpose.
    function scroll() {
        if (!list.visible)
            return
        const chosen = DictionariesListModel.selectedDictionaryIndex
        const isLast = chosen >= list.count - 1
        list.positionViewAtIndex(chosen, isLast ? ListView.Contain : ListView.Beginning)
        if (isLast)
            Global.scrollPageDown(list)
        if (!DeviceInfoProvider.touch)
            list.currentIndex = Math.max(0, languageHeaderInjectorProxyModel.mapFromSource(
                DictionariesListModel.index(chosen, 0)).row)
    }

    // For whenever the list may come into sight. It gets its rows late in the turn, since each reset before would make all
    // of them anew, and a proxy model that is new resets itself once more as late as that.
    function begin() {
        list.model = null
        Qt.callLater(list.showRows) // qmllint disable
        if (visible)
            focusOnFirstElement()
    }

    // Leaves by a signal, once the user has agreed to stop what is being downloaded.
    function leave(signal) {
        if (morphInstallationSummary.runningCount === 0)
            return signal()
        abortMorphConfirmationDialogLazy.open(false, dialog => dialog.applyCallback = () => {
            morphInstallationSummary.abortAll()
            signal()
        })
    }

    dialogWidth: GlobalValues.defaultDialogWidth
    title: DictionariesListModel.isDownloadMode ? qsTr('@SelectDictionariesToDownload') : qsTr('@SelectDictionary')
    headless: true
    state: 'VerticalCenter'
    backOnPgUp: true
    closeInterceptor: () => false
    // The keys that leave ask like the header does.
    keyInterceptor: signal => header.canLeave && leave(signal)
    initialFocusItem: list.count === 0 && !DictionariesListModel.isDownloadMode ? download_btn : list

    onVisibleChanged: {
        if (visible)
            DictionariesListModel.reset()
        begin()
    }
    Component.onCompleted: begin()

    Connections {
        target: DictionariesListModel

        // Rows may come without a refresh being told; the first may be a header without a tile.
        function onModelReset() {
            list.visible = DictionariesListModel.getCount() > 0
            Qt.callLater(list.settleFocus) // qmllint disable
        }
        function onModelRefreshed() {
            download_btn.markedCount = DictionariesListModel.selectedCount
            list.visible = true
            list.forceLayout()
            list.visible = languageHeaderInjectorProxyModel.rowCount() > 0
            if (DictionariesListModel.isDownloadMode)
                list.currentIndex = 0
            else
                wrapper.scroll()
            if (download_btn.activeFocus && !download_btn.enabled)
                wrapper.focusOnFirstElement()
            list.settleFocus()
        }
        function onShowEmptyScreen() { list.visible = false }
        function onIsDownloadModeChanged(isDownloadMode) {
            list.lastFocusedItem = null // other rows are coming
            download_btn.markedCount = DictionariesListModel.selectedCount
            if (isDownloadMode)
                download_btn.busy_visible = false
            download_btn.enabled = !isDownloadMode || download_btn.markedCount > 0
        }
        function onNoNewDictionaries() { download_btn.endBusy() }
        function onToDownloadModFailed() { download_btn.endBusy() }
        function onSelectedCountChanged() {
            download_btn.markedCount = DictionariesListModel.selectedCount
            if (DictionariesListModel.isDownloadMode)
                download_btn.enabled = download_btn.markedCount > 0
        }
    }

    DialogBackActionHeader {
        id: header

        readonly property bool canLeave: morphInstallationSummary.canAbort || morphInstallationSummary.runningCount == 0

        width: parent.width
        height: wrapper.headless ? GlobalValues.dialogHeaderHeight : 0
        visible: wrapper.headless
        text: wrapper.title
        backwardAvailable: DictionariesListModel.isDownloadMode
        actionAvailable: DeviceInfoProvider.touch
        actionIcon: "image://resource/close"
        actionPressedIcon: "image://resource/close_inv"
        canBack: canLeave
        canAction: canLeave
        onBack: wrapper.leave(wrapper.back)
        onAction: wrapper.leave(wrapper.close)
        onActiveFocusChanged: if (activeFocus) list.lastFocusedItem = header

        Keys.onUpPressed: {
            const next = !DictionariesListModel.isDownloadMode || download_btn.markedCount > 0 ? download_btn : list
            if (next === list)
                list.lastFocusedItem = download_btn
            next.forceActiveFocus()
        }
        Keys.onDownPressed: list.count > 0 ? list.forceActiveFocus() : download_btn.forceActiveFocus()
    }

    Item {
        id: dialog
        width: parent.width
        height: wrapper.height - 3 * GlobalValues.dialogHeaderHeight

        Keys.enabled: DeviceInfoProvider.touch && list.contentHeight > list.height
        Keys.onPressed: event => Global.turnPage(event, () => Global.scrollPageUp(list), () => Global.scrollPageDown(list))

        CachedListView {
            id: list

            // Where the focus came from.
            property Item lastFocusedItem: null
            // Whether the rows' info buttons have the key focus, rather than the rows.
            property bool infoColumnSelected: false

            function showRows() {
                if (!wrapper.visible) // and that not for a moment only: the question goes, too
                    return abortMorphConfirmationDialogLazy.close()
                model = languageHeaderInjectorProxyModel
                wrapper.scroll()
                settleFocus()
            }

            width: parent.width
            anchors.top: parent.top
            anchors.bottom: separator.top
            anchors.bottomMargin: GlobalValues.dialogContentTopBottomOffset
            focus: count > 0
            clip: true
            pressDelay: GlobalValues.listPressDelay
            Accessible.name: wrapper.title
            boundsBehavior: contentHeight > height ? Flickable.DragAndOvershootBounds : Flickable.StopAtBounds

            onFlickStarted: DeviceInfoProvider.enterA2onFlickForItem(list)
            onActiveFocusChanged: {
                if (!activeFocus || DeviceInfoProvider.touch) // a finger chooses the row itself
                    return
                currentIndex = lastFocusedItem === header ? 0 : lastFocusedItem === download_btn ? count - 1 : currentIndex
                settleFocus()
                lastFocusedItem = null
            }
            KeyNavigation.up: header.backwardAvailable && header.focusable ? header : download_btn
            KeyNavigation.down: download_btn.enabled ? download_btn : header.focusable ? header : null
            LongKeyNavigation.down: KeyNavigation.down

            model: LanguageHeaderInjectorProxyModel {
                id: languageHeaderInjectorProxyModel
                sourceModel: DictionariesListModel
                langPropertyName: list.section.property
                groupSortPropertyName: 'languageFrom'
            }
            section.property: 'languageFromPair'
            section.criteria: ViewSection.FullString
            // What follows is made row by row, and refers to what is around the list.
            // qmllint disable unqualified
            section.delegate: SectionHeader {
                required property string section
                readonly property string language: section.split('|')[1] ?? ''

                width: dialog.width
                height: GlobalValues.listElementHeight
                title: language === 'Other' ? qsTr('@Other') : language
            }
            delegate: DelegateChooser {
                role: 'injectedType'

                DelegateChoice {
                    roleValue: 'item'

                    DictionaryListItem {
                        id: row

                        required property int index
                        required property var model
                        readonly property int sourceIndex: languageHeaderInjectorProxyModel.mapRowToSource(index)

                        width: dialog.width
                        list: ListView.view
                        title: model.displayTitle ?? ''
                        provider: model.provider ?? ''
                        downloadMode: DictionariesListModel.isDownloadMode
                        selectedToDownload: model.selectedToDownload ?? false
                        selected: DictionariesListModel.selectedDictionaryIndex === sourceIndex
                        installed: model.installed ?? false
                        hasInfo: DictionariesListModel.getHasDescription(sourceIndex)

                        onPressed: wrapper.chooseDictionary(sourceIndex, false)
                        onClicked: {
                            if (!DeviceInfoProvider.touch) // no press came before
                                wrapper.chooseDictionary(sourceIndex, false)
                            wrapper.close()
                        }
                        onInfoClicked: wrapper.infoClicked(sourceIndex)
                        onToggleSelectionClicked: DictionariesListModel.toggleSelected(sourceIndex)
                        ListView.onReused: selectedToDownload = Qt.binding(() => model.selectedToDownload ?? false)

                        Loader {
                            active: DebugInfo.debugEnabled
                            sourceComponent: StyledText { font.pointSize: 4; text: row.model.languageFromPair ?? '' }
                        }
                    }
                }
                DelegateChoice {
                    roleValue: 'header'

                    MorphDonwloadTile {
                        required property var model

                        x: GlobalValues.dialogHeaderSeparatorSideOffset
                        width: dialog.width - 2 * GlobalValues.dialogHeaderSeparatorSideOffset
                        height: visible ? implicitHeight : 0
                        visible: implicitVisibility && !DictionariesListModel.isDownloadMode
                        langIso: (model.languageFromPair ?? '').split('|')[0]
                        morphExplorer: DictionariesListModel.morphExplorer
                        installationSummary: morphInstallationSummary
                    }
                }
            }
            // qmllint enable unqualified
        }
        ScrollIndicator {
            anchors.top: list.top
            anchors.right: list.right
            visible: list.visible && list.contentHeight > list.height
            flickable: list
        }
        StyledText {
            anchors.verticalCenter: list.verticalCenter
            x: Global.dp(64)
            width: parent.width - 2 * x
            visible: !list.visible
            text: qsTr('@NoInstalledDictionaries')
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WrapAnywhere
        }
        SolidSeparator {
            id: separator
            width: parent.width
            anchors.bottom: download_btn.top
        }
        ImgBusyIndicatorTextButton {
            id: download_btn

            // The model doesn't tell when marks go with their rows.
            property int markedCount: 0

            function endBusy() {
                busy_visible = false
                enabled = true
            }

            width: parent.width
            anchors.bottom: parent.bottom
            z: 2
            focus: !DictionariesListModel.isDownloadMode && list.count === 0
            icon: DictionariesListModel.isDownloadMode ? 'panel_package_downloading' : 'plus_add'
            disabled_icon: DictionariesListModel.isDownloadMode ? 'panel_package_downloading_disabled' : 'plus_add'
            text: (!DictionariesListModel.isDownloadMode ? qsTr('@AddNewDictionaries')
                   : markedCount > 0 ? '%1 (%2)'.arg(qsTr('@Download')).arg(markedCount) : qsTr('@Download')).toUpperCase()
            showLongPressText: !DeviceInfoProvider.touch

            onAction: {
                if (DictionariesListModel.isDownloadMode) {
                    wrapper.apply()
                    DictionariesListModel.isDownloadMode = false
                } else {
                    busy_visible = true
                    DictionariesListModel.toDownloadMode()
                    enabled = false
                }
            }
            // Without rows the list gets the focus when they come, not by a key.
            onActiveFocusChanged: if (activeFocus && list.count > 0) list.lastFocusedItem = download_btn
            KeyNavigation.up: list.count > 0 ? list : header.focusable ? header : null
            Keys.onDownPressed: event => {
                if (event.isAutoRepeat) // of the key that is held to come here from the list
                    return
                if (header.backwardAvailable && header.focusable) {
                    header.forceActiveFocus()
                } else if (list.count > 0) {
                    list.lastFocusedItem = header
                    list.forceActiveFocus()
                }
            }

            FocusElement {}
        }
        TsiInstallationSummary {
            id: morphInstallationSummary
            onRunningCountChanged: if (runningCount === 0) abortMorphConfirmationDialogLazy.close() // nothing to stop
        }
        Lazy {
            id: abortMorphConfirmationDialogLazy
            parent: wrapper.Window.contentItem

            ConfirmationDialog {
                title: qsTr('@DoYouWantToStopTheDownload')
                applyTitle: qsTr('@Stop')
                cancelTitle: qsTr('@ContinueDownloading')
                canApply: morphInstallationSummary.canAbort // qmllint disable unqualified
                closeOnAction: true
                onClose: parent.visible = false
            }
        }
    }
}
