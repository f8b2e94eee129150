pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The title of the file list and, at its right, how much has changed or how far the reading is.
Item {
    id: root

    required property FileListViewModel viewModel
    required property FileListModel files

    readonly property bool hasTotals: !root.viewModel.isLoading && root.files.count > 0

    implicitHeight: Theme.titleLine

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
