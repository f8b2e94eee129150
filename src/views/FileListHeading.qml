pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What stands above the files: the title, how much has changed or how far the reading is, and the full
/// picture where there is one.
Column {
    id: root

    required property FileListViewModel viewModel
    required property FileListModel files

    readonly property bool hasTotals: !root.viewModel.isLoading && root.files.count > 0

    spacing: Theme.spaceL

    Item {
        width: root.width
        height: Theme.titleLine

        PlainLabel {
            text: qsTr("Working changes")
            font: Theme.titleFont
            line: Theme.titleLine
            color: Theme.inkHeading
            Accessible.role: Accessible.Heading
        }

        Row {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.spaceXxs
            spacing: Theme.spaceM

            PlainLabel {
                visible: root.viewModel.isLoading
                text: root.viewModel.totalFiles > 0 ? qsTr("Reading changes… %1 / %2").arg(root.viewModel.finishedFiles).arg(root.viewModel.totalFiles) : qsTr("Reading changes…")
                color: Theme.inkTertiary
            }
            PlainLabel {
                visible: root.hasTotals
                text: root.files.count === 1 ? qsTr("1 file") : qsTr("%1 files").arg(root.files.count)
                color: Theme.inkSecondary
            }
            CountLabel {
                visible: root.hasTotals && count > 0
                count: root.files.additions
                isAddition: true
            }
            CountLabel {
                visible: root.hasTotals && count > 0
                count: root.files.deletions
                isAddition: false
            }
        }
    }

    NarrativeCard {
        width: root.width
        visible: isLoading || hasNarrative
        files: root.files
        isLoading: root.viewModel.isNarrativeLoading
    }
}
