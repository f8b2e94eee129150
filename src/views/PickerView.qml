pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Dialogs
import Vantrel

/// Where a repository is chosen.
FocusScope {
    id: root

    required property RootViewModel viewModel

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    Column {
        id: block

        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.max(32, Math.min(240, 0.55 * (root.height + Theme.titleBarSize - 540)))
        width: 400

        Image {
            width: 56
            height: 56
            sourceSize.width: 56 * Screen.devicePixelRatio
            sourceSize.height: 56 * Screen.devicePixelRatio
            source: "qrc:/qt/qml/Vantrel/icons/app.svg"
            Accessible.ignored: true
        }
        Item {
            width: 1
            height: Theme.spaceXl
        }
        PlainLabel {
            width: block.width
            text: qsTr("Open a repository to read its working changes.")
            font: Theme.displayFont
            line: Theme.displayLine
            color: Theme.inkHeading
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.role: Accessible.Heading
        }
        Item {
            width: 1
            height: Theme.spaceM
        }
        PlainLabel {
            width: block.width
            text: qsTr("Pick any folder containing a .git directory. Every uncommitted file is summarised, and each hunk gets an explanation you can question.")
            font: Theme.proseFont
            line: Theme.proseLine
            color: Theme.inkSecondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        Item {
            width: 1
            height: Theme.spaceXxl
        }
        PrimaryButton {
            focus: true
            height: Theme.controlLargeSize
            text: qsTr("Choose Folder…")
            onClicked: dialog.open()
        }
        Item {
            width: 1
            height: Theme.spaceXl
            visible: refusal.visible
        }
        ErrorBox {
            id: refusal

            width: block.width
            visible: message !== ""
            message: root.viewModel.refusal
        }
    }

    FolderDialog {
        id: dialog

        title: qsTr("Choose a repository folder")
        onAccepted: root.viewModel.openFolder(dialog.selectedFolder)
    }

    Shortcut {
        sequences: ["Ctrl+O"]
        enabled: root.enabled
        onActivated: dialog.open()
    }
}
