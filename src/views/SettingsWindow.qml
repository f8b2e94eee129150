pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The window of the settings.
FramedWindow {
    id: root

    required property SettingsViewModel viewModel

    signal setupRequested

    /// Shows the settings as they are stored, or as they were being edited, in front.
    function showSettings(): void {
        root.viewModel.reloadIfChanged();
        root.viewModel.checkSavedKey();
        root.present();
    }

    width: Theme.subWindowSize
    height: Theme.subWindowSize
    minimumWidth: Theme.subWindowSize
    maximumWidth: Theme.subWindowSize
    minimumHeight: Theme.subWindowMinHeightSize
    title: qsTr("Settings")

    SettingsView {
        objectName: "settings"
        anchors.top: strip.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        focus: true
        viewModel: root.viewModel
        onSetupRequested: root.setupRequested()
    }

    SubWindowTitle {
        id: strip

        width: parent.width
        title: root.title
    }
}
