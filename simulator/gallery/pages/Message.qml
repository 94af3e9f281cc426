import QtQuick
import com.tessaly.controls 1.0

Item {
    InfoMessage {
        bottomOffset: Global.mm(40)
        Component.onCompleted: showFor(qsTr("@NoNewDictionaries"), "", 60000)
    }
    InfoMessage {
        bottomOffset: Global.dp(47)
        Component.onCompleted: showFor(qsTr("@DictionaryWasDeleted").arg("Chinese (Simplified, Singapore)")
                                       .arg("Norwegian"), "", 60000)
    }
}
