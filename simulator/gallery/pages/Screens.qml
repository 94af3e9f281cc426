import QtQuick
import com.tessaly.dictionaries 1.0

// The list without dictionaries, and what is known of one, each on half a screen.
Column {
    Item {
        width: parent.width
        height: parent.height / 2

        DictionariesListDialog {
            Component.onCompleted: DictionariesListModel.refreshData()
        }
    }
    Item {
        width: parent.width
        height: parent.height / 2

        DictionaryInfoDialog {
            id: dialog
            info: DictionaryInfo {
                title: "English ⇾ German (FreeDict)"
                languageFrom: "English"
                languageTo: "German"
                issuer: "FreeDict"
                publishDate: "2023-10-12"
                description: qsTr("@NoInformationAboutDictionary").concat(". ").repeat(40)
            }
            Component.onCompleted: dialog.focusOnFirstElement()
        }
    }
}
