pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The main window.
FramedWindow {
    id: root

    required property RootViewModel viewModel
    required property SystemAppearance appearance
    required property string uiFamily
    required property string codeFamily

    property bool reducesMotion: root.appearance.reducesMotion

    width: Theme.windowWidthSize
    height: Theme.windowHeightSize
    minimumWidth: Theme.windowMinWidthSize
    minimumHeight: Theme.windowMinHeightSize
    visible: true
    title: qsTr("Reviewer")

    Binding {
        target: Theme
        property: "dark"
        value: root.appearance.isDark
    }
    Binding {
        target: Theme
        property: "reducesMotion"
        value: root.reducesMotion
    }
    Binding {
        target: Theme
        property: "uiFamily"
        value: root.uiFamily
    }
    Binding {
        target: Theme
        property: "codeFamily"
        value: root.codeFamily
    }

    RootView {
        anchors.fill: parent
        viewModel: root.viewModel
        onSettingsRequested: settings.showSettings()
        onShortcutsRequested: shortcuts.present()
    }

    SettingsWindow {
        id: settings

        viewModel: root.viewModel.settings
        onSetupRequested: {
            root.viewModel.setup.open();
            root.present();
        }
    }

    ShortcutsWindow {
        id: shortcuts
    }

    Shortcut {
        sequences: ["Ctrl+Q"]
        context: Qt.ApplicationShortcut
        onActivated: Qt.quit()
    }
}
