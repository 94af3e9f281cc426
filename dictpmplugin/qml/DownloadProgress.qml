import QtQuick 2.0
import com.tessaly.dictionaries 1.0

// How far the download is. It shows nothing yet.
FocusScope {
    property int selectedCount: DictionariesListModel.selectedCount
    property bool isDownloding: true
}
