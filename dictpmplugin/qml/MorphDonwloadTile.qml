import QtQuick
import com.tessaly.dictionaries 1.0

// Offers a language's morphology data. It shows nothing yet.
Item {
    property string langIso
    property MorphExplorer morphExplorer
}
