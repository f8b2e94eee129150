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

    /// Only an updater without windows of its own needs ours.
    readonly property FeedSoftwareUpdater feedUpdater: root.viewModel.softwareUpdater as FeedSoftwareUpdater

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

    Loader {
        Component.onCompleted: if (root.feedUpdater !== null) {
            setSource("UpdateWindow.qml", {
                updater: root.feedUpdater
            });
        }
    }

    Shortcut {
        sequences: ["Ctrl+Q"]
        context: Qt.ApplicationShortcut
        onActivated: Qt.quit()
    }
}
