pragma Singleton
import QtQuick
import com.tessaly.controls.device

// Whether the device shows what developers want to see.
QtObject {
    readonly property bool debugEnabled: DeviceInfoProvider.debugMode
}
