import QtQuick
import com.tessaly.controls.device

// A loader that keeps the device awake while what it loaded is to be seen.
Loader {
    id: loader

    readonly property SleepGuard sleepGuard: SleepGuard {
        active: loader.visible && loader.item !== null
    }
}
