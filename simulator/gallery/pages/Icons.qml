import QtQuick
import com.tessaly.controls 1.0
import ".."

Page {
    title: "Icons"

    Grid {
        columns: 2
        columnSpacing: Global.mm(6)
        rowSpacing: Global.mm(1)

        Repeater {
            model: ["radiobtn", "radiobtn_checked", "checkbox_square_on", "checkbox_square_off", "info", "close",
                    "trash_small", "desktop_app_dictionary", "icon_error", "wb_download", "done", "plus_add",
                    "panel_package_downloading", "desktop_arrow_down_joystick", "arrow_back", "scroll_up",
                    "scroll_down"]

            Row {
                id: icon

                required property string modelData

                height: Global.mm(8.6)
                spacing: Global.mm(2)

                Repeater {
                    model: ["resource/%1", "resource/%1_inv", "resource_inv_circle/%1", "resource/%1_disabled"]

                    Image {
                        required property string modelData

                        anchors.verticalCenter: parent.verticalCenter
                        source: "image://" + modelData.arg(icon.modelData) // qmllint disable unqualified
                    }
                }
            }
        }
    }
}
