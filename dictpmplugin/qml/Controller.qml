import QtQml 2.12
import QtQuick 2.0
import com.tessaly.dictionaries 1.0
import com.tessaly.controls 1.0

// The interface's top level: which screen is shown, and what leads from one to the next. A screen is loaded when it is
// first shown, and stays.
Item {
    id: wrapper

    property bool isDictListLoaded: false

    signal close()
    signal installed()

    function showDicts() {
        DictionariesListModel.refreshData()
        wrapper.visible = true
        dictionary_list_dialog_loader.visible = true
        focusTopScreen()
    }

    // The list is behind all others; where there is none, keys still lead out.
    function focusTopScreen() {
        const screens = [error_1_loader, confirmation_dialog, simple_error_loader, dict_download_dialog_loader,
                         dict_info_dialog_loader, dictionary_list_dialog_loader]
        for (const loader of screens) {
            if (!loader.visible || loader.status !== Loader.Ready)
                continue
            if (!loader.item.activeFocus)
                loader.item.forceActiveFocus()
            return
        }
        wrapper.forceActiveFocus()
    }

    function hideProgressBar() {
        dict_download_dialog_loader.visible = false
    }

    function dumpDicts() {
        DictionariesListModel.dump()
    }

    anchors.fill: parent
    visible: true

    onWidthChanged: {
        dictionary_list_dialog_loader.visible = false
        Global.openInformationConfirmationDialogLoader(dictionary_list_dialog_loader,
                                                       qsTr("@SelectDictionariesToDownload"))
        focusTopScreen()
    }
    Keys.onPressed: event => {
        const leaves = [Qt.Key_Back, Qt.Key_Backspace, Qt.Key_PageUp, Qt.Key_Escape].includes(event.key)
        if (!leaves || !wrapper.activeFocus) // a screen sees to its keys itself
            return
        event.accepted = true
        wrapper.close()
    }

    Connections {
        target: DictPMController

        function onFatalError() {
            wrapper.hideProgressBar()
            const text = DictPMController.errorType() === DictPMController.NoSpaceOnSecureStorage
                       ? qsTr("@InsufficientStorageSpace")
                       : qsTr("@ThereIsAnIssueWithDownloadingSelectedDictionaries")
            Global.openInfoMessageLoader(error_1_loader, text, "image://resource/icon_error", 10000)
        }
        function onSimpleError() {
            wrapper.hideProgressBar()
            Global.openInformationConfirmationDialog(simple_error_loader)
        }
    }
    Connections {
        target: DictionariesListModel

        function onNoNewDictionaries() {
            Global.openInfoMessageLoader(info_msg_loader, qsTr("@NoNewDictionaries"), "", 3000)
        }
        function onDictionaryDeleted(lang1, lang2, index) {
            Global.openInfoMessageLoader(info_msg_loader, qsTr("@DictionaryWasDeleted").arg(lang1).arg(lang2), "", 3000)
        }
        function onDictonaryChoosed(close_app) {
            if (close_app)
                dictionary_list_dialog_loader.dialog.stopScroll()
        }
        function onDataManagerError(error) {
            if (error === DataManager.NetworkNotAvailableError)
                console.log("DataManager.NetworkNotAvailableError")
            else if (error === DataManager.NetworkError)
                infoMessageLazy.openMessage(qsTr('@DownloadFailedCheckYourNetworkConnectionAndTryAgain'))
            else if (error === DataManager.DatabaseFileNotExist)
                console.log("DataManager.DatabaseFileNotExist")
        }
    }

    Loader {
        id: dictionary_list_dialog_loader

        readonly property DictionariesListDialog dialog: item as DictionariesListDialog

        function update() {
            if (visible && status === Loader.Null)
                source = "DictionariesListDialog.qml"
            else if (visible && status === Loader.Ready)
                dialog.scroll()
        }

        anchors.fill: parent
        onVisibleChanged: update()
        Component.onCompleted: update()
    }
    Connections {
        target: dictionary_list_dialog_loader.dialog

        function onClose() {
            dictionary_list_dialog_loader.dialog.stopScroll()
        }
        function onClose2() {
            wrapper.close()
        }
        function onInfoClicked(selected_index) {
            dict_info_dialog_loader.selectedIndex = selected_index
            dict_info_dialog_loader.visible = true
        }
        function onChooseDictionary(index, close) {
            DictionariesListModel.chooseDictionary(index, close)
        }
        function onBack() {
            if (DictionariesListModel.isDownloadMode) {
                DictionariesListModel.setIsDownloadMode(false)
                DictionariesListModel.refreshData()
            } else {
                dictionary_list_dialog_loader.dialog.stopScroll()
            }
        }
        function onApply() {
            // Nothing here needs the count and the title; which calls come, and in which order, is agreed on.
            const count = DictionariesListModel.selectedCount
            const i = DictionariesListModel.findFirstSelectedToDownload()
            const serverId = DictionariesListModel.idPair(i).serverId
            const title = i >= 0 ? DictionariesListModel.getTitle(i) : "-1"
            DictPMController.downloadPackageProcess()
            dictionary_list_dialog_loader.visible = false
            dict_download_dialog_loader.downloadingId = serverId
            dict_download_dialog_loader.visible = true
        }
    }

    LoaderNoSleep {
        id: dict_info_dialog_loader

        property int selectedIndex: 0
        readonly property DictionaryInfoDialog dialog: item as DictionaryInfoDialog

        function update() {
            if (visible && status === Loader.Null)
                source = "DictionaryInfoDialog.qml"
            else if (visible && status === Loader.Ready)
                show()
        }

        function show() {
            setDialogData()
            dialog.forceActiveFocus()
        }

        function setDialogData() {
            const model = DictionariesListModel
            const s = selectedIndex
            dict_info.languageFrom = model.getLanguageFrom(s)
            dict_info.languageTo = model.getLanguageTo(s)
            dict_info.languageIsoFrom = model.getLanguageFrom(s, true)
            dict_info.languageIsoTo = model.getLanguageTo(s, true)
            dict_info.issuer = model.getProvider(s)
            dict_info.publishDate = model.getPublishDate(s)
            dict_info.subject = model.getCategory(s)
            dict_info.description = model.getDescription(s)
            dict_info.coverUrl = model.getCoverUrl(s)
            if (dict_info.languageFrom === "" || dict_info.languageTo === "") {
                dict_info.title = ""
                dialog.title = model.getTitle(s)
            } else {
                dict_info.title = "%1 ⇾ %2 (%3)".arg(dict_info.languageFrom).arg(dict_info.languageTo)
                                                .arg(dict_info.subject)
                dialog.title = dict_info.title
            }
            dialog.morphExplorer = model.morphExplorer
            dialog.info = dict_info
        }

        anchors.fill: parent
        visible: false
        onVisibleChanged: update()
        onLoaded: if (visible) show()
        Component.onCompleted: update()
    }
    Connections {
        target: dict_info_dialog_loader.dialog

        function onClose() {
            dict_info_dialog_loader.visible = false
            wrapper.close()
        }
        function onBack() {
            dict_info_dialog_loader.visible = false
            dictionary_list_dialog_loader.dialog.makeScrollWorks()
            dictionary_list_dialog_loader.dialog.forceActiveFocus()
        }
        function onDeleteDict() {
            const text = qsTr("@AreYouSureYouWanDeletDictionary?")
                .arg(dict_info.languageFrom)
                .arg(dict_info.languageTo + " (" + dict_info.subject + ")")
            Global.openConfirmationDialog(confirmation_dialog, text, delete_dictionary_callback)
        }
    }
    DictionaryInfo {
        id: dict_info
    }
    Item {
        id: delete_dictionary_callback

        function applyAction() {
            Global.closeConfirmationDialogLoader(confirmation_dialog)
            DictionariesListModel.deleteDict(dict_info_dialog_loader.selectedIndex)
            dict_info_dialog_loader.visible = false
            dictionary_list_dialog_loader.dialog.makeScrollWorks()
            dictionary_list_dialog_loader.dialog.focusOnFirstElement()
        }

        function cancelAction() {
            Global.closeConfirmationDialogLoader(confirmation_dialog)
            dict_info_dialog_loader.dialog.forceActiveFocus()
        }
    }

    Loader {
        id: dict_download_dialog_loader

        property int selectedIndex: 0
        property int downloadingId: -1
        readonly property DownloadProgress dialog: item as DownloadProgress

        function update() {
            if (visible && status === Loader.Null)
                source = "DownloadProgress.qml"
            else if (visible && status === Loader.Ready)
                show()
        }

        function show() {
            const n = DictionariesListModel.selectedCount
            dialog.selectedCount = n
            dialog.isDownloding = true
            dialog.title = qsTr("@DownloadingDictionaries", "", n).arg(n)
            dialog.forceActiveFocus()
        }

        function updateCurrentDictionary() {
            DictionariesListModel.refreshData()
            const i = DictionariesListModel.indexFromServerId(downloadingId)
            if (i >= 0)
                DictionariesListModel.chooseDictionary(i)
        }

        anchors.fill: parent
        visible: false
        onVisibleChanged: update()
        onLoaded: if (visible) show()
        Component.onCompleted: update()
    }
    Connections {
        target: dict_download_dialog_loader.dialog

        function onClose() {
            if (!DictPMController.isInstalling)
                onCancel()
        }
        function onCancel() {
            DictPMController.cancelDownloading()
            wrapper.hideProgressBar()
            wrapper.close()
            dict_download_dialog_loader.updateCurrentDictionary()
        }
        function onApply() {
            wrapper.hideProgressBar()
            wrapper.installed()
            dict_download_dialog_loader.updateCurrentDictionary()
        }
    }

    Loader {
        id: error_1_loader

        function update() {
            if (visible && status === Loader.Null)
                sourceComponent = error_1_component
        }

        anchors.fill: parent
        visible: false
        onVisibleChanged: update()
        Component.onCompleted: update()

        Component {
            id: error_1_component

            InfoMessage {
                visible: false
            }
        }
    }
    Connections {
        target: error_1_loader.item

        function onClose() {
            Global.closeInfoMessageLoader(error_1_loader)
            wrapper.close()
        }
    }
    Loader {
        id: info_msg_loader

        function update() {
            if (visible && status === Loader.Null)
                sourceComponent = info_msg_component
        }

        anchors.fill: parent
        visible: false
        onVisibleChanged: update()
        Component.onCompleted: update()

        Component {
            id: info_msg_component

            InfoMessage {
                anchors.bottom: parent.bottom
                bottomOffset: Global.dp(47)
                visible: false
            }
        }
    }
    Connections {
        target: info_msg_loader.item

        function onClose() {
            Global.closeInfoMessageLoader(info_msg_loader)
        }
    }
    Loader {
        id: simple_error_loader

        property int selectedIndex: 0
        readonly property ErrorDialog dialog: item as ErrorDialog

        function update() {
            if (visible && status === Loader.Null)
                source = "ErrorDialog.qml"
            else if (visible && status === Loader.Ready)
                dialog.forceActiveFocus()
        }

        anchors.fill: parent
        visible: false
        onVisibleChanged: update()
        Component.onCompleted: update()
    }
    Connections {
        target: simple_error_loader.dialog

        function onClose() {
            simple_error_loader.visible = false
            wrapper.focusTopScreen()
        }
        function onCancel() {
            DictPMController.reDownloadPackageProcess()
            simple_error_loader.visible = false
            dict_download_dialog_loader.visible = true
        }
        function onApply() {
            DictPMController.cancelDownloading()
            simple_error_loader.visible = false
            wrapper.close()
        }
    }

    LoaderNoSleep {
        id: confirmation_dialog

        property var callback
        readonly property ConfirmationDialog dialog: item as ConfirmationDialog

        function update() {
            if (visible && status === Loader.Null)
                sourceComponent = confirmation_component
            if (visible && status === Loader.Ready)
                dialog.forceActiveFocus()
        }

        function answer(action) {
            if (callback && callback[action])
                callback[action]()
            visible = false
        }

        anchors.fill: parent
        z: 100
        visible: false
        onVisibleChanged: update()
        Component.onCompleted: update()

        Component {
            id: confirmation_component

            ConfirmationDialog {
            }
        }
    }
    Connections {
        target: confirmation_dialog.dialog

        function onCancel() {
            confirmation_dialog.answer("cancelAction")
        }
        function onApply() {
            confirmation_dialog.answer("applyAction")
        }
    }

    Lazy {
        id: infoMessageLazy

        function openMessage(message) {
            infoMessageLazy.open(true, im => im.showWithMessage(message))
        }

        InfoMessage {
            id: infoMessage
            anchors.fill: parent
            autohideInterval: 10000
            onClose: parent.visible = false
        }
    }
}
