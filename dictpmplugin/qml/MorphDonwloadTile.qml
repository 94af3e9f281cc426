import QtQuick
import QtQuick.Layouts
import com.tessaly.controls 2.0
import com.tessaly.dictionaries 1.0
import com.tessaly.controls.services 1.0

// Offers the morphology data of a language for download, shows how far that is, and that it is done.
Item {
    id: root

    property string langIso
    // Whether the server has data for the language and the device has not.
    readonly property bool implicitVisibility: root.morphExplorer?.urlMap.at(root.langIso).value !== undefined
                                               && !root.morphExplorer?.exists(root.langIso)
    property alias installButton: install_button
    property MorphExplorer morphExplorer
    property TsiInstallationSummary installationSummary
    // Texts begin beside a square, in whose middle the spinner and the icons are.
    readonly property real iconSquare: Global.pixelsFromDesign(94)
    readonly property real iconMargin: (iconSquare - Global.pixelsFromDesign(48)) / 2
    readonly property bool isInstalled: root.morphExplorer?.existanceMap.at(root.langIso).value ?? false

    implicitHeight: Math.max(GlobalValues.listElementHeight,
                             install_button.visible ? install_button.implicitHeight : 0,
                             progress_bar.visible ? progress_bar.implicitHeight : 0,
                             success_text.visible ? success_text.implicitHeight : 0)

    // The list gives the key focus to the tile; while there is the button, it is what the keys are for.
    onActiveFocusChanged: {
        if (activeFocus && install_button.visible)
            install_button.forceActiveFocus()
    }

    TsiInstallationService {
        id: installationService
        apiKeyProvider: root.morphExplorer?.apiKeyProvider ?? null
        summary: root.installationSummary
        // A new tile finds a transfer that is under way.
        url: root.morphExplorer?.urlMap.at(root.langIso).value ?? ""
    }

    ColumnLayout {
        id: states
        anchors.fill: parent
        spacing: 0

        // The language's name is the one that nobody tells the tile.
        // qmllint disable
        BitmapTextButton {
            id: install_button
            Layout.fillWidth: true
            visible: root.morphExplorer?.existanceMap.at(root.langIso).value === false && !installationService.running
            image: 'wb_download'
            leftPadding: root.iconMargin
            spacing: root.iconMargin
            text: Fmt.sprintfTr("@DownloadMorphology", [ root.langTitle ])
            onClicked: installationService.install(root.morphExplorer.urlMap.at(root.langIso).value)
            onVisibleChanged: {
                if (visible && root.activeFocus)
                    install_button.forceActiveFocus()
                else if (!visible && activeFocus)
                    root.forceActiveFocus()
            }
        }
        // Most tiles never show what follows, and most lists make many tiles.
        Loader {
            id: progress_bar
            Layout.fillWidth: true
            active: installationService.running
            visible: active
            sourceComponent: InstallationProgressBar {
                title: Fmt.sprintfTr('@InstallingMorphology', [ root.langTitle ])
                progress.value: installationService.progress
                progress.maxValue: 1.0
                rightMargin: Global.pixelsFromDesign(19.5)
                leftItem: Item {
                    width: root.iconSquare
                    height: width

                    BusyIndicator {
                        anchors.centerIn: parent
                    }
                }
            }
        }
        Loader {
            id: success_text
            Layout.fillWidth: true
            active: root.isInstalled && !installationService.running
            visible: active
            sourceComponent: BitmapTextButton {
                interactive: false
                image: 'done'
                leftPadding: root.iconMargin
                spacing: root.iconMargin
                text: Fmt.sprintfTr('@MorphologyHasBeenInstalled', [ root.langTitle ])
            }
        }
        // qmllint enable
    }
    DottedSeparator {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        color: GlobalValues.defaultSolidseparatorColor
        thickness: GlobalValues.defaultSolidSeparatorThickness
    }
    Loader {
        anchors.right: parent.right
        active: DebugInfo.debugEnabled
        sourceComponent: StyledText {
            font.pointSize: 4
            text: root.langIso + ' ' + (root.isInstalled ? 'installed' : 'not installed') // qmllint disable unqualified
        }
    }
    FocusElement {
    }
}
