pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Dialogs
import Vantrel

/// The title bar, the screen of the coordinator's route below it, and what may lie over the screen.
Rectangle {
    id: root

    required property RootViewModel viewModel

    /// The file that was open last, so that the file list finds its place again.
    property string lastFilePath: ""
    property real listPosition: 0

    readonly property bool isPicking: root.viewModel.fileList === null && root.viewModel.diff === null

    /// Nothing lies over the screen. Behind a folder dialog of ours, a screen reader could otherwise take
    /// the keyboard away from it, and no key would close it any more.
    readonly property bool isScreenInFront: !notice.visible && !question.visible && !root.isSettingUp && !dialog.visible
    readonly property bool isSettingUp: root.viewModel.setup.viewModel !== null

    signal settingsRequested
    signal shortcutsRequested

    /// Makes the route's screen anew. It is handed its view model once, since the former one is on its
    /// way out while its screen still is there.
    function showScreen(): void {
        root.rememberPlace();
        if (root.viewModel.diff !== null) {
            screen.setSource("DiffView.qml", {
                viewModel: root.viewModel.diff,
                panelSizes: panelSizes
            });
        } else if (root.viewModel.fileList !== null) {
            screen.setSource("FileListView.qml", {
                viewModel: root.viewModel.fileList,
                initialPath: root.lastFilePath,
                initialPosition: root.listPosition
            });
        } else {
            screen.setSource("PickerView.qml", {
                viewModel: root.viewModel.picker
            });
        }
    }

    function showSetup(): void {
        if (root.isSettingUp) {
            setup.setSource("SetupSheet.qml", {
                viewModel: root.viewModel.setup.viewModel
            });
            (setup.item as Item).forceActiveFocus();
        } else {
            setup.source = "";
        }
    }

    function rememberPlace(): void {
        const diff = screen.item as DiffView;
        const list = screen.item as FileListView;
        if (diff !== null) {
            root.lastFilePath = diff.filePath;
        } else if (list !== null) {
            root.listPosition = list.position;
        } else {
            root.lastFilePath = "";
            root.listPosition = 0;
        }
    }

    color: Theme.surface
    Component.onCompleted: {
        root.showScreen();
        root.showSetup();
        root.viewModel.setup.openIfNeeded();
    }

    Connections {
        function onScreenChanged(): void {
            root.showScreen();
        }

        target: root.viewModel
    }

    Connections {
        function onViewModelChanged(): void {
            root.showSetup();
        }

        target: root.viewModel.setup
    }

    PanelSizes {
        id: panelSizes
    }

    Loader {
        id: screen

        anchors.top: titleBar.bottom
        anchors.bottom: parent.bottom
        width: root.width
        focus: true
        enabled: root.isScreenInFront
        onLoaded: {
            if (enabled) {
                (screen.item as Item).forceActiveFocus();
            }
        }
        onEnabledChanged: {
            if (enabled) {
                (screen.item as Item).forceActiveFocus();
            }
        }
    }

    Connections {
        function onFolderRequested(): void {
            dialog.open();
        }
        function onSettingsRequested(): void {
            root.settingsRequested();
        }

        target: screen.item
        ignoreUnknownSignals: true
    }

    RefusalBox {
        id: refusal

        anchors.horizontalCenter: screen.horizontalCenter
        y: root.height - height - Theme.spaceXxl
        width: Math.min(Theme.sheetWidthSize, root.width - 2 * Theme.spaceXxl)
        message: root.isPicking ? "" : root.viewModel.picker.errorMessage

        Connections {
            function onRefused(): void {
                refusal.isDismissed = false;
            }

            target: root.viewModel.picker
        }
    }

    DropVeil {
        anchors.fill: screen
        enabled: root.isScreenInFront
        onFolderDropped: folder => root.viewModel.openFolder(folder)
    }

    // Handed its view model once, as a screen is.
    Loader {
        id: setup

        anchors.fill: screen

        Connections {
            function onDismissed(): void {
                root.viewModel.setup.close();
            }

            target: setup.item
            ignoreUnknownSignals: true
        }
    }

    // One thing at a time.
    ProgramsQuestion {
        id: question

        anchors.fill: screen
        visible: root.viewModel.picker.isAsking && !notice.visible && !root.isSettingUp
        picker: root.viewModel.picker
    }

    KeychainNotice {
        id: notice

        anchors.fill: screen
        notice: root.viewModel.keychainAccessNotice
    }

    // After the screen, so that the keyboard comes to it last.
    TitleBar {
        id: titleBar

        objectName: "titleBar"
        width: root.width
        coordinator: root.viewModel.coordinator
        canChooseFolder: root.isScreenInFront
        updater: root.viewModel.softwareUpdater
        onFolderRequested: dialog.open()
        onSettingsRequested: root.settingsRequested()
        onShortcutsRequested: root.shortcutsRequested()
    }

    FolderDialog {
        id: dialog

        title: qsTr("Choose a repository folder")
        onAccepted: root.viewModel.openFolder(dialog.selectedFolder)
    }

    Shortcut {
        sequences: ["Ctrl+O"]
        enabled: root.isScreenInFront
        onActivated: dialog.open()
    }
    Shortcut {
        sequences: ["Ctrl+,"]
        onActivated: root.settingsRequested()
    }
    Shortcut {
        sequences: ["F1"]
        onActivated: root.shortcutsRequested()
    }
    Shortcut {
        sequences: ["F10"]
        onActivated: titleBar.openMenu()
    }
}
