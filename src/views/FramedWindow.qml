pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A window that draws its own frame and title bar, with the manners of any other: it can be resized
/// at its edges, and Ctrl+W closes it.
Window {
    id: root

    property bool isResizable: true

    default property alias content: contentArea.data

    readonly property bool isMaximized: root.visibility === Window.Maximized || root.visibility === Window.FullScreen

    /// Shows the window over the middle of the one that it belongs to, or brings it to the front.
    function present(): void {
        const owner = root.transientParent;
        if (root.visible) {
            root.raise();
            root.requestActivate();
            return;
        }
        if (owner !== null) {
            root.x = owner.x + Math.round((owner.width - root.width) / 2);
            root.y = owner.y + Math.round((owner.height - root.height) / 2);
        }
        root.show();
    }

    flags: Qt.Window | Qt.FramelessWindowHint | Qt.WindowSystemMenuHint | Qt.WindowMinMaxButtonsHint | Qt.WindowCloseButtonHint
    color: Theme.surface

    Item {
        id: contentArea

        anchors.fill: parent
    }

    Rectangle {
        anchors.fill: parent
        visible: !root.isMaximized
        color: "transparent"
        border.width: Theme.hairlineWidth
        border.color: Theme.lineStrong
    }

    ResizeEdges {
        anchors.fill: parent
        visible: root.isResizable && !root.isMaximized
    }

    Shortcut {
        sequences: ["Ctrl+W"]
        onActivated: root.close()
    }
}
