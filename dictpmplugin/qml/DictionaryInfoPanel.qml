import QtQuick
import com.tessaly.dictionaries 1.0

// What is known of a dictionary. It shows nothing yet.
Item {
    property DictionaryInfo info: DictionaryInfo {}
    property MorphExplorer morphExplorer

    signal deleteDict()
    signal back()
}
