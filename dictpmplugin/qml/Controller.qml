import QtQuick 2.0
import com.tessaly.dictionaries 1.0

// The interface's top level. It shows nothing yet.
Item {
    id: wrapper

    property bool isDictListLoaded: false

    signal close()
    signal installed()

    function showDicts() {
        DictionariesListModel.refreshData()
        wrapper.visible = true
    }

    function dumpDicts() {
        DictionariesListModel.dump()
    }
}
