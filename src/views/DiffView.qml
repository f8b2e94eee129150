pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// One file: the toolbar, both panes, and the explanation beside or, in a narrow window, below them.
FocusScope {
    id: root

    required property DiffViewModel viewModel
    required property PanelSizes panelSizes

    signal settingsRequested

    /// Where the keyboard goes in the file list after this screen.
    readonly property string filePath: toolbar.filePath

    readonly property bool isNarrow: root.width < Theme.narrowSize
    readonly property real defaultSidebarWidth: Math.max(Theme.sidebarDefaultMinSize, Math.min(Theme.sidebarDefaultMaxSize, Math.round(Theme.sidebarRatio * root.width)))
    readonly property real sidebarWidth: root.panelSizes.sidebarWidth > 0 ? root.panelSizes.sidebarWidth : root.defaultSidebarWidth
    readonly property real maximumBottomHeight: Math.max(Theme.panelMinSize, root.height / 2)
    readonly property real bottomHeight: Math.min(root.maximumBottomHeight, root.panelSizes.bottomHeight > 0 ? root.panelSizes.bottomHeight : Theme.panelSize)

    Component.onCompleted: root.viewModel.load()

    DiffToolbarView {
        id: toolbar

        width: root.width
        viewModel: root.viewModel
    }

    CodePanesView {
        id: panes

        anchors.top: toolbar.bottom
        width: root.isNarrow ? root.width : root.width - root.sidebarWidth
        height: root.height - y - (root.isNarrow ? root.bottomHeight : 0)
        focus: true
        viewModel: root.viewModel
        Keys.onReturnPressed: conversation.focusField()
        Keys.onEnterPressed: conversation.focusField()
    }

    Rectangle {
        id: panel

        x: root.isNarrow ? 0 : panes.width
        y: root.isNarrow ? panes.y + panes.height : toolbar.height
        width: root.width - x
        height: root.height - y
        color: Theme.surface

        Rectangle {
            id: explanationPart

            width: root.isNarrow ? Math.round(panel.width / 2) : panel.width
            height: root.isNarrow ? panel.height : Math.min(sidebar.implicitHeight, Math.round(Theme.explanationRatio * panel.height))
            visible: sidebar.hasExplanation
            color: Theme.card

            ExplanationSidebarView {
                id: sidebar

                anchors.fill: parent
                anchors.leftMargin: root.isNarrow ? 0 : Theme.hairlineWidth
                anchors.topMargin: root.isNarrow ? Theme.hairlineWidth : 0
                viewModel: root.viewModel
                onSettingsRequested: root.settingsRequested()
                onEscaped: panes.forceActiveFocus(Qt.OtherFocusReason)
            }

            Rectangle {
                x: root.isNarrow ? parent.width : 0
                y: root.isNarrow ? 0 : parent.height
                width: root.isNarrow ? Theme.hairlineWidth : parent.width
                height: root.isNarrow ? parent.height : Theme.hairlineWidth
                color: Theme.line
            }
        }
    }

    ConversationPanelView {
        id: conversation

        x: root.isNarrow ? panel.x + Math.round(panel.width / 2) + Theme.hairlineWidth : panel.x + Theme.hairlineWidth
        y: root.isNarrow ? panel.y + Theme.hairlineWidth : panel.y + explanationPart.height + Theme.hairlineWidth
        width: root.width - x
        height: root.height - y
        visible: sidebar.hasExplanation
        viewModel: root.viewModel
        onSettingsRequested: root.settingsRequested()
        onEscaped: panes.forceActiveFocus(Qt.OtherFocusReason)
    }

    PanelDivider {
        objectName: "divider"

        x: root.isNarrow ? 0 : panel.x - width / 2
        y: root.isNarrow ? panel.y - height / 2 : panel.y
        width: root.isNarrow ? root.width : implicitWidth
        height: root.isNarrow ? implicitHeight : panel.height
        isVertical: !root.isNarrow
        onDragged: distance => {
            if (root.isNarrow) {
                root.panelSizes.bottomHeight = Math.max(Theme.panelMinSize, Math.min(root.maximumBottomHeight, root.bottomHeight - distance));
            } else {
                root.panelSizes.sidebarWidth = Math.max(Theme.sidebarMinSize, Math.min(Theme.sidebarMaxSize, root.sidebarWidth - distance));
            }
        }
        onReset: {
            root.panelSizes.sidebarWidth = 0;
            root.panelSizes.bottomHeight = 0;
        }
    }

    Shortcut {
        sequences: ["Alt+Left"]
        enabled: root.enabled
        onActivated: root.viewModel.goBack()
    }
}
