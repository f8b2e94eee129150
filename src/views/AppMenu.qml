pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// The application's menu.
T.Menu {
    id: root

    property bool canChooseFolder: true
    /// Null when this build is not configured for updates.
    property SoftwareUpdating updater: null

    signal folderRequested
    signal settingsRequested
    signal shortcutsRequested

    implicitWidth: Theme.menuWidthSize
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.spaceXs + Theme.hairlineWidth
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    // Escape would not reach it any more.
    onActiveFocusChanged: if (!root.activeFocus) {
        root.close();
    }

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex
        Accessible.role: Accessible.PopupMenu
        Accessible.name: qsTr("Menu")

        Keys.onPressed: event => {
            for (let i = 0; i < root.count; ++i) {
                if (event.text !== "" && root.itemAt(i).enabled && (root.itemAt(i) as MenuEntry).text.startsWith(event.text.toUpperCase())) {
                    root.currentIndex = i;
                    event.accepted = true;
                    return;
                }
            }
        }
    }

    background: FloatingSheet {
        radius: Theme.cardRadius
    }

    MenuEntry {
        text: qsTr("Choose Folder…")
        keys: "Ctrl+O"
        enabled: root.canChooseFolder
        onTriggered: root.folderRequested()
    }
    MenuEntry {
        text: qsTr("Settings…")
        keys: "Ctrl+,"
        onTriggered: root.settingsRequested()
    }
    MenuEntry {
        height: visible ? implicitHeight : 0
        visible: root.updater !== null
        enabled: root.updater !== null && root.updater.canCheckForUpdates
        text: qsTr("Check for Updates…")
        onTriggered: root.updater.checkForUpdates()
    }
    MenuEntry {
        text: qsTr("Keyboard Shortcuts")
        keys: "F1"
        onTriggered: root.shortcutsRequested()
    }
    MenuEntry {
        text: qsTr("Quit Vantrel")
        keys: "Ctrl+Q"
        onTriggered: Qt.quit()
    }
}
