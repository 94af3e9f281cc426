import QtQml 2.12
import QtQuick 2.0
import QtQuick.Layouts 1.12
import QtQuick.Window 2.12
import com.tessaly.controls 2.0
import com.tessaly.dictionaries 1.0
import com.tessaly.controls.services 1.0

// A language's title in the list, with the tile for its morphology data beneath.
Item {
    id: localRoot

    property alias header: section_header
    property alias installMorphButton: morph_tile.installButton
    property string langIso
    property string langTitle
    property MorphExplorer morphExplorer
    property TsiInstallationSummary installationSummary

    implicitHeight: column.implicitHeight + column.anchors.topMargin + column.anchors.bottomMargin

    TsiInstallationService {
        id: installationService
        apiKeyProvider: localRoot.morphExplorer?.apiKeyProvider ?? null
        summary: localRoot.installationSummary
    }

    ColumnLayout {
        id: column
        anchors.fill: parent
        spacing: 0

        SectionHeader {
            id: section_header
            Layout.fillWidth: true
            Layout.preferredHeight: GlobalValues.listElementHeight
            title: localRoot.langTitle === "Other" ? qsTr("@Other") : localRoot.langTitle
        }
        MorphDonwloadTile {
            id: morph_tile
            Layout.fillWidth: true
            visible: implicitVisibility
        }
    }
    StyledText {
        visible: DebugInfo.debugEnabled
        font.pointSize: 3
        text: [
            localRoot.langIso + " -> " + localRoot.morphExplorer?.urlMap.at(localRoot.langIso).value,
            "exist -> " + localRoot.morphExplorer?.exists(localRoot.langIso),
            "can_abort -> " + installationService.canAbort
        ].join("\n")
    }
}
