pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The window of the settings.
Window {
    id: root

    required property SettingsViewModel viewModel

    /// Shows the settings as they are stored, or as they were being edited, in front.
    function showSettings(): void {
        root.viewModel.reloadIfChanged();
        root.viewModel.checkSavedKey();
        root.show();
        root.raise();
        root.requestActivate();
    }

    width: 640
    height: 640
    minimumWidth: 640
    maximumWidth: 640
    minimumHeight: 320
    visible: false
    title: qsTr("Settings")
    color: Theme.surface

    SettingsView {
        objectName: "settings"
        anchors.fill: parent
        focus: true
        viewModel: root.viewModel
    }

    Shortcut {
        sequences: ["Ctrl+W"]
        onActivated: root.close()
    }
    Shortcut {
        sequences: ["Ctrl+Q"]
        onActivated: Qt.quit()
    }
}
