import QtQuick

// A question with two answers. Leaving it in any way is the answer "cancel".
DialogContainer {
    id: dialog

    property alias applyTitle: footer.applyTitle
    property alias cancelTitle: footer.cancelTitle
    property alias canApply: footer.canApply
    // Whether an answer also closes the dialog.
    property bool closeOnAction: true
    // Called with the answer; null: nothing is.
    property var applyCallback: null
    property var cancelCallback: null

    dialogWidth: GlobalValues.infoMessageWidth
    headless: true
    initialFocusItem: footer
    onBack: answer(cancelCallback, cancel)
    closeInterceptor: () => {
        answer(cancelCallback, cancel)
        return true
    }

    // Closes first: whoever hears of the answer may move the focus.
    function answer(callback, signal) {
        if (closeOnAction)
            close()
        if (callback)
            callback()
        signal()
    }

    StyledText {
        width: parent.width
        padding: GlobalValues.dialogSidePadding
        topPadding: Global.mm(6)
        bottomPadding: Global.mm(6)
        text: dialog.title
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }
    DialogFooter {
        id: footer
        focus: true
        applyTitle: qsTr("@Yes")
        cancelTitle: qsTr("@No")
        onApply: dialog.answer(dialog.applyCallback, dialog.apply)
        onCancel: dialog.answer(dialog.cancelCallback, dialog.cancel)
    }
}
