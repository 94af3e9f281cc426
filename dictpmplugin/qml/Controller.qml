import QtQml 2.12
import QtQuick 2.0
import com.tessaly.dictionaries 1.0
import com.tessaly.controls 1.0

// The interface's top level: which screen is shown, and what leads from one to the next. A screen is loaded when it is
// first shown, and stays; a property of its type would load its document at once.
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
        if (!Global.focusFirstShown(screens))
            wrapper.forceActiveFocus()
    }

    function hideProgressBar() {
        dict_download_dialog_loader.visible = false
    }

    function dumpDicts() {
        DictionariesListModel.dump()
    }

    anchors.fill: parent
    onWidthChanged: {
        dictionary_list_dialog_loader.visible = false
        Global.openInformationConfirmationDialogLoader(dictionary_list_dialog_loader,
                                                       qsTr("@SelectDictionariesToDownload"))
        if (visible)
            focusTopScreen()
    }
    Keys.onPressed: event => {
        event.accepted = wrapper.activeFocus && Global.leadsOut(event.key, true) // a screen sees to its keys itself
        if (event.accepted)
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

    // Loads its screen when it is first visible; `shown` says that it is to be seen.
    component LazyLoader: Loader {
        signal shown()

        anchors.fill: parent
        visible: false
        active: false
        onVisibleChanged: Global.showLoader(this)
        Component.onCompleted: Global.showLoader(this)
    }
    component LazyLoaderNoSleep: LoaderNoSleep {
        signal shown()

        anchors.fill: parent
        visible: false
        active: false
        onVisibleChanged: Global.showLoader(this)
        Component.onCompleted: Global.showLoader(this)
    }
    component MessageLoader: LazyLoader {
        id: message_loader

        signal closed()

        sourceComponent: Component { InfoMessage { visible: false } }

        Connections {
            target: message_loader.item
            function onClose() {
                Global.closeInfoMessageLoader(message_loader)
                message_loader.closed()
            }
            function onOver() {
                Global.closeInfoMessageLoader(message_loader)
            }
        }
    }

    LazyLoader {
        id: dictionary_list_dialog_loader

        readonly property DictionariesListDialog dialog: item as DictionariesListDialog

        source: "DictionariesListDialog.qml"
        visible: true
        onShown: dialog.scroll()
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
            if (!DictionariesListModel.isDownloadMode)
                return dictionary_list_dialog_loader.dialog.stopScroll()
            DictionariesListModel.setIsDownloadMode(false)
            DictionariesListModel.refreshData()
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

    LazyLoaderNoSleep {
        id: dict_info_dialog_loader

        property int selectedIndex: 0
        readonly property var dialog: item

        function setDialogData() {
            dict_info.read(DictionariesListModel, selectedIndex)
            dialog.title = dict_info.title || DictionariesListModel.getTitle(selectedIndex)
            dialog.morphExplorer = DictionariesListModel.morphExplorer
            dialog.info = dict_info
        }

        source: "DictionaryInfoDialog.qml"
        onShown: {
            setDialogData()
            dialog.forceActiveFocus()
        }
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
                .arg(dict_info.languageFrom).arg(dict_info.languageTo + " (" + dict_info.subject + ")")
            Global.openConfirmationDialog(confirmation_dialog, text, delete_dictionary_callback)
        }
    }
    DictionaryInfo { id: dict_info }
    Item {
        id: delete_dictionary_callback

        function applyAction() {
            Global.closeConfirmationDialogLoader(confirmation_dialog)
            const row = dict_info_dialog_loader.selectedIndex // another one's by now, perhaps
            if (dict_info.identityOf(DictionariesListModel, row) === dict_info.identity)
                DictionariesListModel.deleteDict(row)
            dict_info_dialog_loader.visible = false
            dictionary_list_dialog_loader.dialog.makeScrollWorks()
            dictionary_list_dialog_loader.dialog.focusOnFirstElement()
        }

        function cancelAction() {
            Global.closeConfirmationDialogLoader(confirmation_dialog)
            dict_info_dialog_loader.dialog.forceActiveFocus()
        }
    }

    LazyLoader {
        id: dict_download_dialog_loader

        property int selectedIndex: 0
        property int downloadingId: -1
        readonly property var dialog: item

        function updateCurrentDictionary() {
            DictionariesListModel.refreshData()
            const i = DictionariesListModel.indexFromServerId(downloadingId)
            if (i >= 0)
                DictionariesListModel.chooseDictionary(i)
        }

        source: "DownloadProgress.qml"
        onShown: {
            const n = DictionariesListModel.selectedCount
            dialog.selectedCount = n
            dialog.isDownloding = true
            dialog.title = qsTr("@DownloadingDictionaries", "", n).arg(n)
            dialog.forceActiveFocus()
        }
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

    MessageLoader {
        id: error_1_loader
        onClosed: wrapper.close()
    }
    MessageLoader {
        id: info_msg_loader
        sourceComponent: Component {
            InfoMessage {
                anchors.bottom: parent.bottom
                bottomOffset: Global.dp(47)
                visible: false
            }
        }
    }
    LazyLoader {
        id: simple_error_loader

        property int selectedIndex: 0

        source: "ErrorDialog.qml"
        onShown: Global.focusFirstShown([this])
    }
    Connections {
        target: simple_error_loader.item

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

    LazyLoaderNoSleep {
        id: confirmation_dialog

        property var callback

        function answer(action) {
            callback?.[action]?.()
            visible = false
        }

        z: 100
        sourceComponent: Component {
            ConfirmationDialog {
                onCancel: confirmation_dialog.answer("cancelAction") // qmllint disable unqualified
                onApply: confirmation_dialog.answer("applyAction") // qmllint disable unqualified
            }
        }
        onShown: Global.focusFirstShown([this])
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
            bottomOffset: Global.dp(47)
            onClose: parent.visible = false
        }
    }
}
