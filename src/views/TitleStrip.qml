pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What every title bar of ours does: it moves the window, a double click maximises it, and its
/// buttons stand at the right.
Rectangle {
    id: root

    property bool isResizable: true

    /// What stands in the strip lies left of here.
    readonly property real contentRight: buttons.x

    readonly property bool isMaximized: root.Window.visibility === Window.Maximized || root.Window.visibility === Window.FullScreen

    default property alias content: contentArea.data

    function toggleMaximized(): void {
        if (root.isMaximized) {
            root.Window.window.showNormal();
        } else {
            root.Window.window.showMaximized();
        }
    }

    implicitHeight: Theme.titleBarSize
    color: Theme.window
    Accessible.role: Accessible.TitleBar

    TapHandler {
        acceptedButtons: Qt.LeftButton
        enabled: root.isResizable
        onDoubleTapped: root.toggleMaximized()
    }

    DragHandler {
        target: null
        onActiveChanged: if (active) {
            root.Window.window.startSystemMove();
        }
    }

    Item {
        id: contentArea

        anchors.fill: parent
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceXs + Theme.spaceXxs
        anchors.verticalCenter: parent.verticalCenter

        WindowButton {
            visible: root.isResizable
            text: qsTr("Minimise")
            iconName: "minimize"
            onClicked: root.Window.window.showMinimized()
        }
        WindowButton {
            visible: root.isResizable
            text: root.isMaximized ? qsTr("Restore") : qsTr("Maximise")
            iconName: root.isMaximized ? "restore" : "maximize"
            onClicked: root.toggleMaximized()
        }
        WindowButton {
            text: qsTr("Close")
            iconName: "close"
            hoverColor: Theme.windowClose
            pressedColor: Theme.windowClose
            labelColor: hovered || down ? Theme.inkOnWindowClose : Theme.inkSecondary
            onClicked: root.Window.window.close()
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: Theme.hairlineWidth
        color: Theme.line
    }
}
