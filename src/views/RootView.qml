pragma ComponentBehavior: Bound
import QtQuick
import Vantrel

/// The title bar, the screen of the coordinator's route below it, and what may lie over both.
Rectangle {
    id: root

    required property RootViewModel viewModel

    /// Makes the route's screen anew. It is handed its view model once, since the former one is on its
    /// way out while its screen still is there.
    function showScreen(): void {
        if (root.viewModel.diff !== null) {
            screen.setSource("DiffView.qml", {
                    "viewModel": root.viewModel.diff
                });
        } else if (root.viewModel.fileList !== null) {
            screen.setSource("FileListView.qml", {
                    "viewModel": root.viewModel.fileList
                });
        } else {
            screen.setSource("PickerView.qml", {
                    "viewModel": root.viewModel
                });
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
        onLoaded: (screen.item as Item).forceActiveFocus()
    }

    KeychainNotice {
        id: notice

        anchors.fill: parent
        notice: root.viewModel.keychainAccessNotice
    }
}
