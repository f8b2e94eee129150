pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The title bar, the screen of the coordinator's route below it, and what may lie over the screen.
Rectangle {
    id: root

    required property RootViewModel viewModel

    /// The file that was open last, so that the file list finds its place again.
    property string lastFilePath: ""
    property real listPosition: 0

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
    Component.onCompleted: root.showScreen()

    Connections {
        function onScreenChanged(): void {
            root.showScreen();
        }

        target: root.viewModel
    }

    PanelSizes {
        id: panelSizes
    }

    TitleBar {
        id: titleBar

        width: root.width
        coordinator: root.viewModel.coordinator
    }

    Loader {
        id: screen

        anchors.top: titleBar.bottom
        anchors.bottom: parent.bottom
        width: root.width
        focus: true
        enabled: !notice.visible
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

    KeychainNotice {
        id: notice

        anchors.fill: screen
        notice: root.viewModel.keychainAccessNotice
    }
}
