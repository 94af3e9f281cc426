import QtQuick 2.0
import com.tessaly.dictionaries 1.0

// A language's title in the list. It shows nothing yet.
Item {
    property string langIso
    property string langTitle
    property MorphExplorer morphExplorer
}
