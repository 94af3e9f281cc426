// The dictionaries of a device, grouped by language. After ./run, with Debian's package qml-qt6:
//     TESSALY_DEVICE_ROOT=build/device /usr/lib/qt6/bin/qml -I build/dev/qml docs/grouped-list.qml
import QtQuick
import com.tessaly.dictionaries

ListView {
    width: 480; height: 640
    model: LanguageHeaderInjectorProxyModel { sourceModel: DictionariesListModel; langPropertyName: "languageFrom" }
    delegate: Text {
        required property var model
        text: model.injectedType === "header" ? model.languageFrom : "    " + model.displayTitle
        font.bold: model.injectedType === "header"
    }
    Component.onCompleted: DictionariesListModel.refreshData()
}
