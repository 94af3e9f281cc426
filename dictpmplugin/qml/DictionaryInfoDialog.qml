import QtQuick 2.12
import com.tessaly.dictionaries 1.0

// The frame around what is known of a dictionary.
FocusScope {
    property alias info: dictionary_info.info
    property MorphExplorer morphExplorer

    signal deleteDict()

    DictionaryInfoPanel {
        id: dictionary_info
        anchors.fill: parent
        morphExplorer: parent.morphExplorer
    }
}
