import QtQuick 2.12

// The list of dictionaries. It shows nothing yet.
FocusScope {
    signal infoClicked(int selected_index)
    signal chooseDictionary(int index, bool close)
    signal close2()
}
